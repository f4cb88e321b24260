#include "platform/ipc/ClientConnection.h"

#include <algorithm>
#include <asio/post.hpp>
#include <exception>
#include <span>
#include <utility>

#include "platform/ipc/LogTexts.h"
#include "platform/ipc/RunUntilStopped.h"
#include "platform/logging/LogLine.h"

namespace platform::ipc {

namespace {

// The item's name and payload as a frame would carry them; false when none can.
bool IsSendable(const TagIPCMessageItem& item) {
  return item.length >= 0 && (item.length == 0 || item.payload != nullptr) &&
         FitsFrame(item.name.size(), static_cast<std::size_t>(item.length)) && IsUtf8(item.name);
}

Frame FrameOf(const TagIPCMessageItem& item) {
  return {.receiver = item.receiver,
          .code = item.code,
          .replyCode = item.replyCode,
          .name = item.name,
          .payload = std::span(item.payload, static_cast<std::size_t>(item.length))};
}

Frame StatusFrame(std::int32_t receiver, std::int32_t code, IpcStatus status) {
  return {.receiver = receiver, .code = code, .status = static_cast<std::int32_t>(status)};
}

void FillItem(const Frame& frame, TagIPCMessageItem& item) {
  item.name.assign(frame.name);
  item.receiver = frame.receiver;
  item.sender = frame.sender;
  item.code = frame.code;
  item.replyCode = frame.replyCode;
  item.session = frame.session;
  item.status = frame.status;
  item.length = static_cast<int>(frame.payload.size());
  item.payload = frame.payload.empty() ? nullptr : frame.payload.data();
  item.isLast = frame.isLast;
  item.extra = frame.extra;
}

}  // namespace

ClientConnection::ClientConnection(int clientId, bool hubMustExist, const std::wstring& pipeName)
    : wantedId_(clientId), address_(ResolvePipe(pipeName)), timer_(context_) {
  if (hubMustExist) {
    Stream stream(context_);
    const std::error_code error = ConnectToPipe(stream, address_);
    if (error && !IsBusy(error)) {
      throw std::system_error(error, "no IPC hub at " + address_.string());
    }
    if (!error) {
      Adopt(std::move(stream));
    }
  }
  if (link_ == nullptr) {
    asio::post(context_, [this] { Connect(); });
  }
  thread_ = std::thread([this] { Run(); });
}

void ClientConnection::Run() {
  threadId_ = std::this_thread::get_id();
  RunUntilStopped(context_, "IPCMessageClient::Run", kClientThreadFailure, [this] { Resume(); });
}

void ClientConnection::Resume() {
  if (stopping_) {
    Finish();
  } else if (link_ != nullptr) {
    Disconnect();
  } else {
    RetryLater();
  }
}

void ClientConnection::Connect() {
  Stream stream(context_);
  if (stopping_) {
    return;
  }
  if (ConnectToPipe(stream, address_)) {
    RetryLater();
  } else {
    Adopt(std::move(stream));
  }
}

void ClientConnection::Adopt(Stream stream) {
  const auto link = std::make_shared<Link>(std::move(stream));
  {
    const std::lock_guard lock(mutex_);
    link_ = link;
  }
  Send({.sender = wantedId_, .code = kHelloCode, .extra = kProtocolVersion});
  Read(link);
}

void ClientConnection::RetryLater() {
  timer_.expires_after(retryDelay_);
  timer_.async_wait([this](const std::error_code& cancelled) {
    if (!cancelled) {
      Connect();
    }
  });
  retryDelay_ = std::min(2 * retryDelay_, kLastRetryDelay);
}

void ClientConnection::Disconnect() {
  if (link_ == nullptr) {
    return;
  }
  int id = kAnyId;
  {
    const std::lock_guard lock(mutex_);
    std::error_code ignored;  // closed all the same
    link_->stream.close(ignored);
    link_.reset();
    id = std::exchange(id_, kAnyId);
  }
  paused_ = false;
  if (id != kAnyId) {
    Observe(false);
  }
  if (!stopping_) {
    RetryLater();
  }
}

void ClientConnection::Read(const LinkPointer& link) {
  const std::span<char> space = link->reader.Space();
  const std::lock_guard lock(mutex_);
  link->stream.async_read_some(
      asio::buffer(space.data(), space.size()),
      [this, link](const std::error_code& error, std::size_t bytes) { OnRead(link, error, bytes); });
}

void ClientConnection::OnRead(const LinkPointer& link, const std::error_code& error, std::size_t bytes) {
  if (link != link_) {
    return;
  }
  if (error) {
    Disconnect();
    return;
  }
  link->reader.Commit(bytes);
  HandleBuffered(link);
}

void ClientConnection::HandleBuffered(const LinkPointer& link) {
  while (!stopping_) {
    if (MustPause()) {
      paused_ = true;
      return;
    }
    const FrameResult parsed = link->reader.Next();
    if (parsed.state == FrameState::Incomplete) {
      Read(link);
      return;
    }
    if (parsed.state != FrameState::Complete) {
      LogFailure("IPCMessageClient::Read", kHubConnection, FaultText(parsed.state));
      Disconnect();
      return;
    }
    if (!Take(parsed.frame)) {
      Disconnect();
      return;
    }
    link->reader.Pop(parsed.bytes);
  }
}

bool ClientConnection::MustPause() {
  if (id_ < kFirstServiceId) {
    return false;
  }
  const std::lock_guard lock(mutex_);
  return link_->queue.WaitingBytes() >= kServicePauseBytes;
}

bool ClientConnection::Take(const Frame& frame) {
  if (id_ == kAnyId) {
    return TakeHelloAnswer(frame);
  }
  Deliver(frame);
  return true;
}

bool ClientConnection::TakeHelloAnswer(const Frame& frame) {
  const bool isAnswer = frame.code == kHelloCode && frame.sender == kHubId;
  if (!isAnswer || frame.status != 0 || frame.receiver <= kHubId) {
    LogRefusal(isAnswer && frame.status != 0 ? frame.status : 0);
    return false;
  }
  {
    const std::lock_guard lock(mutex_);
    id_ = frame.receiver;
  }
  changed_.notify_all();
  retryDelay_ = kFirstRetryDelay;
  refusalLogged_ = false;
  Observe(true);
  return true;
}

// Once for all attempts until one succeeds.
void ClientConnection::LogRefusal(int status) {
  constexpr const char* kFunction = "IPCMessageClient::SayHello";
  if (std::exchange(refusalLogged_, true)) {
    return;
  }
  if (status != 0) {
    LogFailure(kFunction, kRefusedByHub, status);
  } else {
    LogFailure(kFunction, kHubConnection, kNoHelloAnswer);
  }
}

void ClientConnection::Deliver(const Frame& frame) {
  FillItem(frame, item_);
  if (!callbacks_.Run(item_) && frame.status == 0 && frame.replyCode != kNoReplyCode) {
    Send(StatusFrame(frame.sender, frame.replyCode, IpcStatus::NoCallback));
  }
}

void ClientConnection::SetObserver(Observer observer) {
  auto shared = observer ? std::make_shared<const Observer>(std::move(observer)) : nullptr;
  const std::lock_guard lock(observerMutex_);
  observer_.swap(shared);
}

void ClientConnection::Observe(bool connected) {
  std::shared_ptr<const Observer> observer;
  {
    const std::lock_guard lock(observerMutex_);
    observer = observer_;
  }
  if (observer == nullptr) {
    return;
  }
  try {
    (*observer)(connected);
  } catch (const std::exception& error) {
    LogFailure("IPCMessageClient::Observe", kObserverThrew, error.what());
  }
}

bool ClientConnection::Post(const TagIPCMessageItem& item) {
  const bool sendable = IsSendable(item);
  const std::lock_guard lock(mutex_);
  if (id_ == kAnyId) {
    return false;
  }
  if (sendable) {
    return SendLocked(FrameOf(item));
  }
  if (item.code != kNoReplyCode) {
    SendLocked(StatusFrame(item.receiver, item.code, IpcStatus::UnsendableAnswer));
  }
  return false;
}

bool ClientConnection::Send(const Frame& frame) {
  const std::lock_guard lock(mutex_);
  return SendLocked(frame);
}

bool ClientConnection::SendLocked(const Frame& frame) try {
  return link_->queue.Add(frame, kClientQueueBytes) && !FlushLocked(link_);
} catch (const std::exception& error) {
  LogFailure("IPCMessageClient::Send", kClientThreadFailure, error.what());
  // What waits could not be sent, and nothing would try again; the end of the pending read makes a new connection.
  std::error_code ignored;
  link_->stream.close(ignored);
  return false;
}

std::error_code ClientConnection::FlushLocked(const LinkPointer& link) {
  return link->queue.Flush(
      link->stream, [this, link](const std::error_code& error, std::size_t bytes) { OnSent(link, error, bytes); });
}

void ClientConnection::OnSent(const LinkPointer& link, const std::error_code& error, std::size_t bytes) {
  if (link != link_) {
    return;
  }
  bool broken = false;
  bool empty = false;
  {
    const std::lock_guard lock(mutex_);
    link->queue.Progress(bytes);
    broken = error || FlushLocked(link);
    empty = link->queue.Empty();
  }
  if (stopping_ && (broken || empty)) {
    Finish();
  } else if (broken) {
    Disconnect();
  } else if (paused_ && !MustPause()) {
    paused_ = false;
    HandleBuffered(link);
  }
}

bool ClientConnection::WaitUntilConnected(std::chrono::milliseconds timeout) {
  std::unique_lock lock(mutex_);
  changed_.wait_for(lock, timeout, [this] { return id_ != kAnyId || finished_; });
  return id_ != kAnyId;
}

void ClientConnection::Stop() {
  if (!stopping_.exchange(true)) {
    asio::post(context_, KeptIn(stopMemory_, [this] { BeginStop(); }));
  }
  if (std::this_thread::get_id() == threadId_) {
    return;  // it stops after the callback that this is called from
  }
  const std::lock_guard lock(joinMutex_);
  if (thread_.joinable()) {
    thread_.join();
  }
}

void ClientConnection::BeginStop() {
  bool unsent = false;
  if (link_ != nullptr) {
    const std::lock_guard lock(mutex_);
    unsent = !link_->queue.Empty();
  }
  if (!unsent) {
    Finish();
    return;
  }
  timer_.expires_after(kStopTimeout);
  timer_.async_wait([this](const std::error_code& cancelled) {
    if (!cancelled) {
      Finish();
    }
  });
}

void ClientConnection::Finish() {
  Disconnect();
  {
    const std::lock_guard lock(mutex_);
    finished_ = true;
  }
  changed_.notify_all();
  context_.stop();
}

}  // namespace platform::ipc
