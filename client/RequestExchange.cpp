#include "client/RequestExchange.h"

#include <algorithm>
#include <limits>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/text/PlenixBase.h"

namespace KT {

namespace {

// Between tries to send into a connection that has ended and not been made anew.
constexpr std::chrono::milliseconds kRetryPause{5};

constexpr int kMostCallbacks = 64;

std::chrono::milliseconds TimeLeft(RequestExchange::Clock::time_point deadline) {
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - RequestExchange::Clock::now());
  return std::max(left, std::chrono::milliseconds(0));
}

RequestExchange::Answer Failure(CallStatus status, std::string explanation) {
  RequestExchange::Answer answer;
  answer.status = status;
  answer.explanation = std::move(explanation);
  return answer;
}

}  // namespace

RequestExchange::RequestExchange(std::wstring pipeName, bool waitForService)
    : pipeName_(std::move(pipeName)), waitForService_(waitForService) {}

RequestExchange::Answer RequestExchange::Run(int receiver, int code, std::string payload,
                                             std::chrono::milliseconds timeout) {
  const std::lock_guard oneCall(callMutex_);
  const auto deadline = Clock::now() + timeout;
  for (;;) {
    if (std::string why = Connect(deadline); !why.empty()) {
      return Failure(CallStatus::NoService, std::move(why));
    }
    if (Post(receiver, code, payload)) {
      return WaitForAnswer(deadline);
    }
    if (Clock::now() >= deadline) {
      return Failure(CallStatus::NoService, "the connection to the hub ended before the request was sent");
    }
    std::this_thread::sleep_for(kRetryPause);  // nothing was sent, so that another try does no harm
  }
}

bool RequestExchange::Post(int receiver, int code, std::string& payload) {
  TagIPCMessageItem request;
  request.receiver = receiver;
  request.code = code;
  request.replyCode = ExpectAnswerFrom(receiver);
  request.length = static_cast<int>(payload.size());
  request.payload = payload.data();
  return client_->PostIPCMessage(request);
}

std::string RequestExchange::Connect(Clock::time_point deadline) {
  if (client_ != nullptr && !waitForService_ && !client_->WaitUntilConnected(std::chrono::milliseconds(0))) {
    client_.reset();  // a new client finds out at once whether the hub is still there
  }
  if (client_ == nullptr) {
    try {
      client_ = std::make_unique<IPCMessageClient>(IPCMessageClient::kAnyClientId, !waitForService_, false, pipeName_);
    } catch (const std::system_error& error) {
      return "nothing serves the pipe " + PlenixBase::UnicodeToUTF8(pipeName_) + ": " + error.code().message();
    }
    client_->SetConnectionObserver([this](bool connected) {
      const std::lock_guard lock(mutex_);
      connectionLost_ = !connected;
      changed_.notify_all();
    });
  }
  if (!client_->WaitUntilConnected(TimeLeft(deadline))) {
    return "the hub of the pipe " + PlenixBase::UnicodeToUTF8(pipeName_) + " did not take the connection in time";
  }
  return {};
}

// Each call has a reply code of its own, so that an answer that comes too late is never taken for that of a later call.
// Callbacks can only be removed all together, which waits for one that still runs: it is left to every 64th call.
int RequestExchange::ExpectAnswerFrom(int receiver) {
  if (++callbacks_ > kMostCallbacks) {
    client_->UnRegisterMessageCallbackAll();
    callbacks_ = 1;
  }
  const int code = lastReplyCode_ == std::numeric_limits<int>::max() ? 1 : lastReplyCode_ + 1;
  lastReplyCode_ = code;
  {
    const std::lock_guard lock(mutex_);
    receiver_ = receiver;
    replyCode_ = code;
    connectionLost_ = false;
    answer_.reset();
  }
  client_->RegisterMessageCallback(code, [this](TagIPCMessageItem& item) { OnAnswer(item); });
  return code;
}

void RequestExchange::OnAnswer(const TagIPCMessageItem& item) {
  const auto status = static_cast<IpcStatus>(item.status);
  const bool fromHub = item.sender == 0 && status != IpcStatus::Answer;
  std::unique_lock lock(mutex_);
  if (item.code != replyCode_) {
    return;  // too late
  }
  if (item.sender != receiver_ && !fromHub) {
    return;  // another client that guessed the reply code; the hub vouches for the sender's id
  }
  Answer answer;
  answer.ipcStatus = status;
  if (status == IpcStatus::Answer) {
    answer.status = CallStatus::Answered;
    answer.payload.assign(item.payload, static_cast<std::size_t>(item.length));
  } else {
    answer.status = CallStatus::Refused;
    answer.explanation = Describe(status);
  }
  answer_ = std::move(answer);
  lock.unlock();  // first, or the caller would wake up only to wait for it
  changed_.notify_all();
}

RequestExchange::Answer RequestExchange::WaitForAnswer(Clock::time_point deadline) {
  std::unique_lock lock(mutex_);
  changed_.wait_until(lock, deadline, [this] { return answer_.has_value() || connectionLost_; });
  if (answer_.has_value()) {
    return *std::move(answer_);
  }
  if (connectionLost_) {
    return Failure(CallStatus::ConnectionLost,
                   "the connection ended before the answer came; the service may or may not have acted");
  }
  return Failure(CallStatus::TimedOut, "no answer in time; the service may or may not have acted");
}

}  // namespace KT
