#include "platform/ipc/HubSession.h"

#include <exception>
#include <utility>

#include "platform/ipc/HubCore.h"
#include "platform/ipc/LogTexts.h"
#include "platform/logging/LogLine.h"

namespace platform::ipc {

HubSession::HubSession(HubCore& hub, Stream stream)
    : hub_(hub), stream_(std::move(stream)), process_(PeerProcess(stream_)), timer_(hub.Context()) {}

void HubSession::Start() {
  Guarded([this] { SetDeadline(hub_.Limits().helloTimeout); });
  Read();
}

template <class Step>
void HubSession::Guarded(Step step) {
  try {
    step();
  } catch (const std::exception& error) {
    CutOff(kHubFailure, error.what());
  }
}

bool HubSession::HasRoom() const { return queue_.WaitingBytes() < hub_.Limits().unreadBytesPerConnection / 4; }

bool HubSession::Admits(HubSession& sender) {
  if (!IsService() || sender.IsService()) {
    return true;
  }
  const bool calledUpon = std::exchange(admitted_, nullptr) == &sender;
  if ((calledUpon || waiters_.empty()) && HasRoom()) {
    return true;
  }
  waiters_.push_back(sender.shared_from_this());
  return false;
}

void HubSession::Send(std::span<const char> frameBytes) {
  if (!closed_) {
    CheckQueued(queue_.Add(frameBytes, hub_.Limits().unreadBytesPerConnection));
  }
}

void HubSession::Send(const Frame& frame) {
  if (!closed_) {
    CheckQueued(queue_.Add(frame, hub_.Limits().unreadBytesPerConnection));
  }
}

void HubSession::CheckQueued(bool taken) {
  if (!taken) {
    CutOff(kNotReading);
  } else if (!flushScheduled_) {
    hub_.ScheduleFlush(*this);
    flushScheduled_ = true;
  }
}

void HubSession::Flush() {
  flushScheduled_ = false;
  if (!closed_) {
    Guarded([this] { SendQueued(); });
    AdmitWaiters();
  }
}

void HubSession::SendQueued() {
  const auto onProgress = [self = shared_from_this()](const std::error_code& error, std::size_t bytes) {
    self->OnSent(bytes, error);
  };
  const std::error_code error = queue_.Flush(stream_, onProgress);
  if (error || (closeWhenSent_ && queue_.Empty())) {
    Close();
  }
}

void HubSession::OnSent(std::size_t bytes, const std::error_code& error) {
  queue_.Progress(bytes);
  if (error) {
    Close();
  } else {
    Flush();
  }
  hub_.CheckDrained();
}

void HubSession::AdmitWaiters() {
  while (!closed_ && !waiters_.empty() && HasRoom()) {
    const std::shared_ptr<HubSession> next = std::move(waiters_.front());
    waiters_.pop_front();
    admitted_ = next.get();
    next->Proceed();
    admitted_ = nullptr;
  }
}

void HubSession::Read() {
  if (closed_ || readingStopped_) {
    return;
  }
  Guarded([this] {
    const std::span<char> space = reader_.Space();
    stream_.async_read_some(
        asio::buffer(space.data(), space.size()),
        [self = shared_from_this()](const std::error_code& error, std::size_t bytes) { self->OnRead(error, bytes); });
  });
}

void HubSession::OnRead(const std::error_code& error, std::size_t bytes) {
  if (closed_ || readingStopped_) {
    return;
  }
  if (!error) {
    reader_.Commit(bytes);
    Proceed();
  } else if (reader_.Empty()) {
    Close();
  } else {
    CutOff(kHalfFrame);
  }
}

void HubSession::Proceed() {
  Guarded([this] { HandleBuffered(); });
}

void HubSession::HandleBuffered() {
  while (!closed_ && !readingStopped_) {
    const FrameResult parsed = reader_.Next();
    if (parsed.state == FrameState::Incomplete) {
      WatchPartialFrame();
      hub_.ReadAfterFlush(*this);
      return;
    }
    if (parsed.state != FrameState::Complete) {
      CutOff(FaultText(parsed.state));
      return;
    }
    deadline_ = Clock::time_point::max();
    switch (hub_.Route(*this, parsed)) {
      case Routing::Done:
        reader_.Pop(parsed.bytes);
        break;
      case Routing::Wait:
      case Routing::SenderCut:
        return;
    }
  }
}

void HubSession::CloseWhenSent() {
  closeWhenSent_ = true;
  StopReading();
  SetDeadline(hub_.Limits().helloTimeout);
}

void HubSession::CutOff(const char* reason, const char* detail) {
  hub_.Tally().CutOff();
  LogLine(reason, detail);
  Close();
}

void HubSession::LogLine(const char* reason, const char* detail) const {
  constexpr const char* kFunction = "IPCMessageHub::CutOff";
  if (id_ == kAnyId) {
    LogFailure(kFunction, kCutOff, process_, reason, detail);
  } else {
    LogFailure(kFunction, kCutOff, process_, kWithId, id_, reason, detail);
  }
}

void HubSession::Close() {
  if (std::exchange(closed_, true)) {
    return;
  }
  std::error_code ignored;  // closed all the same
  stream_.close(ignored);
  timer_.cancel();
  hub_.Forget(*this);
  // Their frames now find no receiver. Later, since one of them may be what is being handled.
  hub_.CallUpon(waiters_);
}

void HubSession::WatchPartialFrame() {
  if (id_ == kAnyId) {
    return;  // the time for the hello runs from the connection's beginning
  }
  if (reader_.Empty()) {
    deadline_ = Clock::time_point::max();
  } else if (deadline_ == Clock::time_point::max()) {
    SetDeadline(hub_.Limits().frameTimeout);
  }
}

void HubSession::SetDeadline(std::chrono::milliseconds wait) {
  deadline_ = Clock::now() + wait;
  if (!timerRuns_ || timer_.expiry() > deadline_) {
    WaitForDeadline();
  }
}

void HubSession::WaitForDeadline() {
  timerRuns_ = true;
  timer_.expires_at(deadline_);
  timer_.async_wait([self = shared_from_this()](const std::error_code& error) {
    if (!error && !self->closed_) {
      self->OnTimer();
    }
  });
}

void HubSession::OnTimer() {
  timerRuns_ = false;
  if (deadline_ == Clock::time_point::max()) {
    return;
  }
  if (Clock::now() < deadline_) {
    Guarded([this] { WaitForDeadline(); });
  } else if (id_ != kAnyId) {
    CutOff(kFrameTooLate);
  } else if (closeWhenSent_) {
    Close();  // a refusal that its peer did not take; the reason is logged already
  } else {
    CutOff(kHelloTooLate);
  }
}

}  // namespace platform::ipc
