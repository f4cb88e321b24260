#include "platform/ipc/HubCore.h"

#include <algorithm>
#include <asio/post.hpp>
#include <exception>
#include <span>
#include <utility>

#include "platform/MemoryPool.h"
#include "platform/ipc/LogTexts.h"
#include "platform/logging/LogLine.h"

namespace platform::ipc {

namespace {

// A receiver may tell a sender that it has no callback or no answer that could be sent, in a frame without payload.
// Every other status is the hub's to send.
bool MayClientSend(const Frame& frame) {
  const auto status = static_cast<IpcStatus>(frame.status);
  return status == IpcStatus::Answer ||
         ((status == IpcStatus::NoCallback || status == IpcStatus::UnsendableAnswer) && frame.payload.empty());
}

Frame StatusFor(std::int32_t sender, const Frame& request, IpcStatus status) {
  return {.receiver = sender, .sender = kHubId, .code = request.replyCode, .status = static_cast<std::int32_t>(status)};
}

constexpr const char* kAccept = "IPCMessageHub::Accept";

}  // namespace

HubCore::HubCore(asio::io_context& context, HandlerMemory& roundMemory, const HubLimits& limits)
    : context_(context), roundMemory_(roundMemory), limits_(limits), acceptTimer_(context), drainTimer_(context) {}

void HubCore::Listen(const PipeAddress& address) {
  listener_ = ListenOnPipe(context_, address);
  accepting_ = true;
  Accept();
}

void HubCore::Accept() try {
  listener_->Accept([this](const std::error_code& error, Stream stream) { OnAccept(error, std::move(stream)); });
  acceptPending_ = true;
} catch (const std::exception& error) {
  AcceptLater(error.what());
}

void HubCore::OnAccept(const std::error_code& error, Stream stream) {
  acceptPending_ = false;
  if (!accepting_) {
    return;
  }
  if (error) {
    AcceptLater(error.message().c_str());
    return;
  }
  acceptFailing_ = false;
  Admit(std::move(stream));
  Accept();
}

// An exception costs this connection alone.
void HubCore::Admit(Stream stream) try {
  const auto session = std::make_shared<HubSession>(*this, std::move(stream));
  if (sessions_.size() < limits_.connections) {
    sessions_.insert(session);
    mostSinceQuiet_ = std::max(mostSinceQuiet_, sessions_.size());
    tally_.SetConnections(sessions_.size());
    session->Start();
  } else {
    tally_.Refuse();
    session->LogLine(kTooManyConnections);
  }
} catch (const std::exception& error) {
  LogFailure(kAccept, kAcceptFailed, error.what());
}

void HubCore::AcceptLater(const char* reason) {
  if (!std::exchange(acceptFailing_, true)) {
    LogFailure(kAccept, kAcceptFailed, reason);
  }
  acceptTimer_.expires_after(kAcceptRetryDelay);
  acceptTimer_.async_wait([this](const std::error_code& cancelled) {
    acceptPending_ = false;
    if (!cancelled && accepting_) {
      Accept();
    }
  });
  acceptPending_ = true;
}

void HubCore::StopAccepting() {
  accepting_ = false;
  acceptTimer_.cancel();
  listener_->Close();
  for (const auto& session : sessions_) {
    if (!session->IsOwnProcess()) {
      session->StopReading();
    }
  }
}

void HubCore::Drain(std::function<void()> done) {
  StopAccepting();
  drained_ = std::move(done);
  drainTimer_.expires_after(kStopTimeout);
  drainTimer_.async_wait([this](const std::error_code& cancelled) {
    if (!cancelled && drained_) {
      std::exchange(drained_, {})();
    }
  });
  CheckDrained();
}

void HubCore::Resume() {
  if (drained_) {
    std::exchange(drained_, {})();
  } else if (accepting_ && !acceptPending_) {
    Accept();
  }
}

void HubCore::CheckDrained() {
  const auto busy = [](const auto& session) { return session->IsService() || session->HasUnsent(); };
  if (drained_ && std::none_of(sessions_.begin(), sessions_.end(), busy)) {
    std::exchange(drained_, {})();
  }
}

void HubCore::CloseAll() {
  for (const auto& session : std::exchange(sessions_, {})) {
    session->Close();
  }
  tally_.SetConnections(0);
}

Routing HubCore::Route(HubSession& from, const FrameResult& parsed) {
  const Frame& frame = parsed.frame;
  if (from.Id() == kAnyId) {
    return Greet(from, frame);
  }
  if (!MayClientSend(frame)) {
    from.CutOff(kForgedStatus);
    return Routing::SenderCut;
  }
  if (frame.receiver == kHubId && frame.code == kHelloCode) {
    from.CutOff(kSecondHello);
    return Routing::SenderCut;
  }
  if (frame.receiver == kHubId && frame.code == kStatusCode && statusProvider_) {
    AnswerStatus(from, frame);
    return Routing::Done;
  }
  return Deliver(from, parsed);
}

Routing HubCore::Greet(HubSession& session, const Frame& hello) {
  if (hello.receiver != kHubId || hello.code != kHelloCode || hello.status != 0) {
    session.CutOff(kNoHello);
    return Routing::SenderCut;
  }
  const IpcStatus status = JudgeHello(session, hello);
  if (status == IpcStatus::Answer) {
    session.Grant(hello.sender == kAnyId ? NextFreeId() : hello.sender);
    byId_[session.Id()] = &session;
  }
  session.Send(Frame{
      .receiver = session.Id(), .sender = kHubId, .code = kHelloCode, .status = static_cast<std::int32_t>(status)});
  if (status != IpcStatus::Answer) {
    tally_.Refuse();
    session.CloseWhenSent();
  }
  return Routing::Done;
}

IpcStatus HubCore::JudgeHello(const HubSession& session, const Frame& hello) const {
  if (hello.extra != kProtocolVersion) {
    session.LogLine(kUnsupportedVersion, std::to_string(hello.extra).c_str());
    return IpcStatus::UnsupportedVersion;
  }
  const std::int32_t wanted = hello.sender;
  if (wanted < kAnyId || (wanted >= kFirstServiceId && !session.IsOwnProcess())) {
    session.LogLine(kIdReserved, std::to_string(wanted).c_str());
    return IpcStatus::IdReserved;
  }
  if (wanted == kHubId || Find(wanted) != nullptr) {
    session.LogLine(kIdTaken, std::to_string(wanted).c_str());
    return IpcStatus::IdTaken;
  }
  return IpcStatus::Answer;
}

// Goes round through all of them, so that an answer that comes late does not reach the next owner of an id.
std::int32_t HubCore::NextFreeId() {
  do {
    lastId_ = lastId_ % (kFirstServiceId - 1) + 1;
  } while (Find(lastId_) != nullptr);
  return lastId_;
}

Routing HubCore::Deliver(HubSession& from, const FrameResult& parsed) {
  const Frame& frame = parsed.frame;
  HubSession* const to = Find(frame.receiver);
  if (to == nullptr) {
    // The hub is a receiver without callbacks. A status is never answered, so that none can go back and forth.
    if (frame.status == 0 && frame.replyCode != kNoReplyCode) {
      const auto status = frame.receiver == kHubId ? IpcStatus::NoCallback : IpcStatus::NoSuchReceiver;
      from.Send(StatusFor(from.Id(), frame, status));
    }
    return Routing::Done;
  }
  if (!to->Admits(from)) {
    return Routing::Wait;
  }
  SetSender(parsed.bytes, from.Id());
  tally_.RouteFrame();
  to->Send(parsed.bytes);
  return Routing::Done;
}

void HubCore::AnswerStatus(HubSession& session, const Frame& request) {
  if (request.status != 0 || request.replyCode == kNoReplyCode) {
    return;
  }
  std::string document;
  try {
    document = statusProvider_();
  } catch (const std::exception& error) {
    LogFailure("IPCMessageHub::AnswerStatus", kNoStatusDocument, error.what());
  }
  if (document.empty() || !FitsFrame(0, document.size())) {
    session.Send(StatusFor(session.Id(), request, IpcStatus::UnsendableAnswer));
    return;
  }
  session.Send(
      Frame{.receiver = session.Id(), .sender = kHubId, .code = request.replyCode, .payload = std::span(document)});
}

HubSession* HubCore::Find(std::int32_t id) const {
  const auto found = byId_.find(id);
  return found == byId_.end() ? nullptr : found->second;
}

void HubCore::ScheduleFlush(HubSession& session) {
  toFlush_.push_back(session.shared_from_this());
  ScheduleRound();
}

void HubCore::CallUpon(std::list<std::shared_ptr<HubSession>>& waiters) {
  if (!waiters.empty()) {
    calledUpon_.splice(calledUpon_.end(), waiters);
    ScheduleRound();
  }
}

void HubCore::ScheduleRound() {
  if (!std::exchange(roundScheduled_, true)) {
    asio::post(context_, KeptIn(roundMemory_, [this] { RunRound(); }));
  }
}

void HubCore::ReadAfterFlush(HubSession& session) {
  if (!roundScheduled_) {
    session.Read();
  } else {
    toRead_.push_back(session.shared_from_this());
  }
}

void HubCore::RunRound() {
  while (!calledUpon_.empty()) {  // each of them may add others
    const std::shared_ptr<HubSession> session = std::move(calledUpon_.front());
    calledUpon_.pop_front();
    session->Proceed();
  }
  roundScheduled_ = false;
  flushing_.swap(toFlush_);
  for (const auto& session : flushing_) {
    session->Flush();
  }
  flushing_.clear();
  reading_.swap(toRead_);
  for (const auto& session : reading_) {
    session->Read();
  }
  reading_.clear();
  EndBurst();
  CheckDrained();
}

void HubCore::Forget(HubSession& session) {
  if (Find(session.Id()) == &session) {
    byId_.erase(session.Id());
  }
  sessions_.erase(session.shared_from_this());
  tally_.SetConnections(sessions_.size());
  if (mostSinceQuiet_ >= kBurstConnections) {
    ScheduleRound();  // which looks whether it was the last one, when nothing holds it any more
  }
  CheckDrained();
}

void HubCore::EndBurst() {
  const auto isOutside = [](const auto& session) { return !session->IsOwnProcess(); };
  if (mostSinceQuiet_ >= kBurstConnections && std::none_of(sessions_.begin(), sessions_.end(), isOutside)) {
    mostSinceQuiet_ = 0;
    ReturnFreeMemory();
  }
}

}  // namespace platform::ipc
