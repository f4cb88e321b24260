// What an IPCMessageClient is made of: its thread, its connection to the hub, its callbacks.
#pragma once

#include <asio/io_context.hpp>
#include <asio/steady_timer.hpp>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "platform/ipc/CallbackTable.h"
#include "platform/ipc/FrameReader.h"
#include "platform/ipc/HandlerMemory.h"
#include "platform/ipc/PipeTransport.h"
#include "platform/ipc/SendQueue.h"
#include "platform/ipc/TagIPCMessageItem.h"

namespace platform::ipc {

// The public operations are those of IPCMessageClient; all others run on the client's thread.
class ClientConnection {
 public:
  using Observer = std::function<void(bool connected)>;

  ClientConnection(int clientId, bool hubMustExist, const std::wstring& pipeName);
  ~ClientConnection() { Stop(); }

  CallbackTable& Callbacks() { return callbacks_; }
  bool Post(const TagIPCMessageItem& item);
  bool WaitUntilConnected(std::chrono::milliseconds timeout);
  void SetObserver(Observer observer);
  void Stop();

 private:
  // One connection. Its pending handlers own it too, so that a late one finds its buffers, and finds that its link is
  // no longer the present one.
  struct Link {
    explicit Link(Stream connected) : stream(std::move(connected)) {}
    Stream stream;
    SendQueue queue;
    FrameReader reader;
  };
  using LinkPointer = std::shared_ptr<Link>;

  void Run();
  void Connect();
  void Adopt(Stream stream);
  void RetryLater();
  void Disconnect();
  void Resume();

  void Read(const LinkPointer& link);
  void OnRead(const LinkPointer& link, const std::error_code& error, std::size_t bytes);
  void HandleBuffered(const LinkPointer& link);
  bool MustPause();
  bool Take(const Frame& frame);
  bool TakeHelloAnswer(const Frame& frame);
  void LogRefusal(int status);
  void Deliver(const Frame& frame);
  void Observe(bool connected);

  bool Send(const Frame& frame);
  bool SendLocked(const Frame& frame);
  std::error_code FlushLocked(const LinkPointer& link);
  void OnSent(const LinkPointer& link, const std::error_code& error, std::size_t bytes);

  void BeginStop();
  void Finish();

  const int wantedId_;
  const PipeAddress address_;
  // No want of memory keeps it from stopping. Before the context, whose handler lies in it to its end.
  HandlerMemory stopMemory_;
  asio::io_context context_{1};  // run by one thread
  asio::steady_timer timer_;     // for the next attempt, or for the end of the stop
  std::chrono::milliseconds retryDelay_ = kFirstRetryDelay;
  bool refusalLogged_ = false;
  bool paused_ = false;  // frames are left in the reader until the queue is shorter
  TagIPCMessageItem item_;
  CallbackTable callbacks_;

  // Guards link_ and id_, and the stream and queue of the link. Only the client's thread changes link_ and id_, so it
  // reads them without.
  std::mutex mutex_;
  std::condition_variable changed_;
  LinkPointer link_;
  int id_ = kAnyId;  // granted
  bool finished_ = false;

  std::mutex observerMutex_;
  std::shared_ptr<const Observer> observer_;

  std::atomic<bool> stopping_ = false;
  std::atomic<std::thread::id> threadId_;
  std::mutex joinMutex_;
  std::thread thread_;
};

}  // namespace platform::ipc
