// One connection, seen from the hub.
#pragma once

#include <asio/steady_timer.hpp>
#include <chrono>
#include <cstdint>
#include <list>
#include <memory>
#include <span>

#include "platform/ipc/FrameReader.h"
#include "platform/ipc/PipeTransport.h"
#include "platform/ipc/SendQueue.h"

namespace platform::ipc {

class HubCore;

// Lives on the hub's thread. Its pending handlers and the hub own it together; after Close only the former do.
//
// Back-pressure. A peer that does not read what is sent to it is cut off. A service is not: a client must not be able
// to get it cut off by flooding it. So where much waits for a service, a client with one more frame for it has to wait:
// the hub reads nothing more from that client until the service has caught up. Those who wait get one frame in each, in
// turn, so that a flood does not shut out anybody else. Services themselves never wait for one another.
class HubSession : public std::enable_shared_from_this<HubSession> {
 public:
  // Takes an accepted stream.
  HubSession(HubCore& hub, Stream stream);

  // Begins to read, and to wait for the hello.
  void Start();

  std::int32_t Id() const { return id_; }  // kAnyId until one is granted
  bool IsService() const { return id_ >= kFirstServiceId; }
  bool IsOwnProcess() const { return process_ == OwnProcess(); }
  bool HasUnsent() const { return !queue_.Empty(); }

  // Makes it a client of that id.
  void Grant(std::int32_t id) { id_ = id; }

  // Whether a frame of `sender` for this connection can be taken now. If not, `sender` has been put in the row of those
  // who wait, and will be called upon to Proceed.
  bool Admits(HubSession& sender);

  // Queues a frame for the peer, to go out when the hub has run what is ready. Too much of it ends the connection.
  void Send(std::span<const char> frameBytes);
  void Send(const Frame& frame);

  // Sends what is queued, then lets in those who wait.
  void Flush();

  // Handles the frames that are buffered, then has the hub call Read.
  void Proceed();

  // Waits for more bytes.
  void Read();

  // Reads no more; what is queued is still sent.
  void StopReading() { readingStopped_ = true; }

  // Ends the connection as soon as what is queued has been sent.
  void CloseWhenSent();

  // Ends the connection with a line in the log: `reason` and what follows it are the line's end.
  void CutOff(const char* reason, const char* detail = "");
  void LogLine(const char* reason, const char* detail = "") const;

  // Ends the connection.
  void Close();

 private:
  using Clock = std::chrono::steady_clock;

  // Runs a step of this connection. An exception, such as memory that ran out, costs this connection alone.
  template <class Step>
  void Guarded(Step step);

  void OnRead(const std::error_code& error, std::size_t bytes);
  void HandleBuffered();
  void SendQueued();
  void OnSent(std::size_t bytes, const std::error_code& error);
  bool HasRoom() const;
  void CheckQueued(bool taken);
  void AdmitWaiters();
  void WatchPartialFrame();
  void SetDeadline(std::chrono::milliseconds wait);
  void WaitForDeadline();
  void OnTimer();

  HubCore& hub_;
  Stream stream_;
  const std::uint64_t process_;
  std::int32_t id_ = kAnyId;

  FrameReader reader_;
  SendQueue queue_;
  bool closed_ = false;
  bool closeWhenSent_ = false;
  bool readingStopped_ = false;
  bool flushScheduled_ = false;

  std::list<std::shared_ptr<HubSession>> waiters_;
  const HubSession* admitted_ = nullptr;  // the waiter whose turn it is, until its frame has been taken

  // The deadline moves with each frame; the timer is left to run out and then looks at it, which costs nothing per
  // frame. It runs only while there is, or just was, a deadline.
  asio::steady_timer timer_;
  Clock::time_point deadline_ = Clock::time_point::max();
  bool timerRuns_ = false;
};

}  // namespace platform::ipc
