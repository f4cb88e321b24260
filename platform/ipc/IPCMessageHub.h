// The suite's IPC library, hub side: listens on one pipe and routes messages between the clients connected to it.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>

#include "assistant_export.h"

// What a hub grants its clients. The defaults are the protocol's; tests shorten the waits.
struct HubLimits {
  std::size_t connections = 256;
  // A peer for which more than this waits unread is cut off; where a quarter of it waits for a service, those who send
  // to it are held up instead.
  std::size_t unreadBytesPerConnection = 1024 * 1024;
  std::chrono::milliseconds helloTimeout{5'000};   // from connecting to a complete hello
  std::chrono::milliseconds frameTimeout{30'000};  // from a frame's first byte to its last
};

// One hub serves one pipe name for as long as it lives. Start, StopAccepting and Stop are called by one thread, in that
// order; the hub does its work on a thread of its own.
class ASSISTANT_EXPORT IPCMessageHub {
 public:
  explicit IPCMessageHub(const std::wstring& pipeName, const HubLimits& limits = {});
  // As Stop.
  ~IPCMessageHub();

  IPCMessageHub(const IPCMessageHub&) = delete;
  IPCMessageHub& operator=(const IPCMessageHub&) = delete;

  // Becomes the only hub of this pipe name on the machine, without listening yet. False when there is one already.
  // Throws std::system_error that names what failed otherwise.
  bool Claim();

  // Listens and serves from now on. Needs a successful Claim. Throws std::system_error that names the pipe.
  void Start();

  // First half of an orderly stop: no new connections, and nothing more is read from clients outside this process.
  // Answers of services are still routed.
  void StopAccepting();

  // Second half, after the services' StopDelivery: sends what waits for clients (500 ms at most), closes everything and
  // ends the hub's thread. The claim ends with the hub object.
  void Stop();

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};
