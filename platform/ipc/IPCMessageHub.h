// The suite's IPC library, hub side: listens on one pipe and routes messages between the clients connected to it.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
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

// What a hub did so far.
struct HubCounters {
  std::uint64_t connections = 0;      // open now, services' own among them
  std::uint64_t mostConnections = 0;  // open at one time
  std::uint64_t refused = 0;       // ended before a hello was granted: too many connections, an id or version refused
  std::uint64_t cutOff = 0;        // ended for breaking a rule or a limit
  std::uint64_t framesRouted = 0;  // passed on from one client to another
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

  // Has a request for the hub's status (docs/status.md) answered with what `provider` returns, which must fit a frame.
  // It runs on the hub's thread, between frames, so it must be quick; what it throws is logged, and the request then
  // gets no document. Without one the request is answered like any other that the hub does not know. Before Start.
  void SetStatusProvider(std::function<std::string()> provider);

  // Listens and serves from now on. Needs a successful Claim. Throws std::system_error that names the pipe.
  void Start();

  // First half of an orderly stop: no new connections, and nothing more is read from clients outside this process.
  // Answers of services are still routed.
  void StopAccepting();

  // Second half, after the services' StopDelivery: sends what waits for clients (500 ms at most), closes everything and
  // ends the hub's thread. The claim ends with the hub object.
  void Stop();

  // Any thread; each of the numbers is right for itself.
  HubCounters Counters() const;

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};
