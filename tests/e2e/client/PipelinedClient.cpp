#include "tests/e2e/client/PipelinedClient.h"

#include <utility>

#include "codec/Protocol.h"

namespace e2e {

PipelinedClient::PipelinedClient(std::size_t window)
    : window_(window), client_(IPCMessageClient::kAnyClientId, false, false, KT::kPipeName) {
  client_.SetConnectionObserver([this](bool connected) {
    const std::lock_guard lock(mutex_);
    lost_ = !connected;
    changed_.notify_all();
  });
}

bool PipelinedClient::Connect(std::chrono::milliseconds patience) { return client_.WaitUntilConnected(patience); }

bool PipelinedClient::Send(int code, std::string payload, Judge judge) {
  if (!WaitForRoom(window_ - 1)) {
    return false;
  }
  TagIPCMessageItem request;
  request.receiver = KT::kServiceClientId;
  request.code = code;
  request.payload = payload.data();
  request.length = static_cast<int>(payload.size());
  {
    const std::lock_guard lock(mutex_);
    request.replyCode = static_cast<int>(++tally_.sent);
    judges_[request.replyCode] = std::move(judge);
  }
  // The callback stays after the answer, so that a second answer is seen.
  client_.RegisterMessageCallback(request.replyCode, [this](TagIPCMessageItem& item) { OnAnswer(item); });
  if (client_.PostIPCMessage(request)) {
    return true;
  }
  const std::lock_guard lock(mutex_);
  judges_.erase(request.replyCode);
  --tally_.sent;
  return false;
}

bool PipelinedClient::Finish() { return WaitForRoom(0); }

Tally PipelinedClient::Result() {
  const std::lock_guard lock(mutex_);
  return tally_;
}

bool PipelinedClient::WaitForRoom(std::size_t room) {
  std::unique_lock lock(mutex_);
  return changed_.wait_for(lock, kPatience, [&] { return lost_ || judges_.size() <= room; }) && !lost_;
}

void PipelinedClient::OnAnswer(const TagIPCMessageItem& item) {
  const std::lock_guard lock(mutex_);
  const auto found = judges_.find(item.code);
  Judge judge;
  if (found != judges_.end()) {
    judge = std::move(found->second);
    judges_.erase(found);
    ++tally_.answered;
  }
  Count(item, std::move(judge));
  changed_.notify_all();
}

void PipelinedClient::Count(const TagIPCMessageItem& item, Judge judge) {
  std::string fault;
  if (!judge) {
    fault = "answered a second time";
  } else if (item.status != 0) {
    fault = "answered with status " + std::to_string(item.status);
  } else if (item.sender != KT::kServiceClientId) {
    fault = "answered by client " + std::to_string(item.sender);
  } else {
    fault = judge(std::string(item.payload, static_cast<std::size_t>(item.length)));
  }
  if (fault.empty()) {
    ++tally_.right;
    return;
  }
  ++tally_.wrong;
  if (tally_.firstFault.empty()) {
    tally_.firstFault = "request " + std::to_string(item.code) + ": " + fault;
  }
}

}  // namespace e2e
