// The hub's connections, and the way of a frame from one to another.
#pragma once

#include <asio/io_context.hpp>
#include <asio/steady_timer.hpp>
#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/ipc/HandlerMemory.h"
#include "platform/ipc/HubSession.h"
#include "platform/ipc/HubTally.h"
#include "platform/ipc/IPCMessageHub.h"
#include "platform/ipc/PipeTransport.h"
#include "platform/ipc/TagIPCMessageItem.h"

namespace platform::ipc {

// What became of a frame.
enum class Routing {
  Done,
  Wait,       // not yet: the sender has to come back with it when it is called upon
  SenderCut,  // it was not allowed
};

// Lives on the hub's thread (Listen before that thread runs, CloseAll after it has ended).
class HubCore {
 public:
  // `roundMemory` is for the handler that all connections hang on; it must outlive `context`.
  HubCore(asio::io_context& context, HandlerMemory& roundMemory, const HubLimits& limits);

  // As IPCMessageHub's. Before Listen.
  void SetStatusProvider(std::function<std::string()> provider) { statusProvider_ = std::move(provider); }

  // Throws std::system_error as ListenOnPipe does.
  void Listen(const PipeAddress& address);

  // No new connections; nothing more is read from clients outside this process.
  void StopAccepting();

  // StopAccepting, then calls `done` once services have gone and nothing waits to be sent, kStopTimeout later at last.
  void Drain(std::function<void()> done);

  // After an exception that escaped a handler: goes on accepting, or ends a Drain that may be without its time limit.
  void Resume();

  // Ends every connection.
  void CloseAll();

  // For sessions.
  const HubLimits& Limits() const { return limits_; }
  asio::io_context& Context() { return context_; }
  HubTally& Tally() { return tally_; }
  const HubTally& Tally() const { return tally_; }
  Routing Route(HubSession& from, const FrameResult& parsed);
  // Flushes it, or has all of `waiters` proceed, when the hub has run what is ready. Where memory runs out,
  // ScheduleFlush throws and has done nothing.
  void ScheduleFlush(HubSession& session);
  void CallUpon(std::list<std::shared_ptr<HubSession>>& waiters);
  // Calls session.Read, now or once what is scheduled has been flushed: an attempt to read what has not come yet would
  // only keep the frames waiting that have.
  void ReadAfterFlush(HubSession& session);
  void Forget(HubSession& session);
  void CheckDrained();

 private:
  void Accept();
  void OnAccept(const std::error_code& error, Stream stream);
  void AcceptLater(const char* reason);
  void Admit(Stream stream);

  Routing Greet(HubSession& session, const Frame& hello);
  IpcStatus JudgeHello(const HubSession& session, const Frame& hello) const;
  Routing Deliver(HubSession& from, const FrameResult& parsed);
  void AnswerStatus(HubSession& session, const Frame& request);
  std::int32_t NextFreeId();
  HubSession* Find(std::int32_t id) const;
  void EndBurst();
  void ScheduleRound();
  void RunRound();

  asio::io_context& context_;
  HandlerMemory& roundMemory_;
  const HubLimits limits_;
  HubTally tally_;
  std::function<std::string()> statusProvider_;
  std::unique_ptr<PipeListener> listener_;
  asio::steady_timer acceptTimer_;

  std::set<std::shared_ptr<HubSession>> sessions_;
  std::size_t mostSinceQuiet_ = 0;  // connections at one time, since there was none from outside
  std::unordered_map<std::int32_t, HubSession*> byId_;
  std::int32_t lastId_ = kHubId;

  // A round runs after all handlers that are ready, so that frames from several senders share a write.
  std::vector<std::shared_ptr<HubSession>> toFlush_;
  std::vector<std::shared_ptr<HubSession>> flushing_;
  std::vector<std::shared_ptr<HubSession>> toRead_;
  std::vector<std::shared_ptr<HubSession>> reading_;
  std::list<std::shared_ptr<HubSession>> calledUpon_;
  bool roundScheduled_ = false;

  bool accepting_ = false;
  bool acceptPending_ = false;  // a handler will call Accept again
  bool acceptFailing_ = false;  // and logged
  asio::steady_timer drainTimer_;
  std::function<void()> drained_;
};

}  // namespace platform::ipc
