// Clients that ask again as soon as they are answered, and what they see.
#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <vector>

#include "bench/roundtrip/ChildProcess.h"
#include "bench/support/Samples.h"

namespace bench {

// What the clients of one load are told, and one client's times. Used by that client's thread alone while it runs.
class ClientLog {
 public:
  using Clock = std::chrono::steady_clock;
  enum class Phase { WarmUp, Measure, Stop };

  explicit ClientLog(const std::atomic<Phase>& phase);

  bool Stopped() const { return phase_.load(std::memory_order_relaxed) == Phase::Stop; }
  // Around one request, from before it is sent until its answer is there.
  void Sending() { sent_ = Clock::now(); }
  void Answered();
  const Samples& Times() const { return times_; }

 private:
  const std::atomic<Phase>& phase_;
  Clock::time_point sent_;
  Samples times_;
};

// One client of a load. The constructor connects.
class LoadClient {
 public:
  virtual ~LoadClient() = default;
  // Starts to ask, on a thread of its own, until the log says that it is stopped.
  virtual void Start() = 0;
  // Waits for the last answer.
  virtual void Join() = 0;
};

using MakeClient = std::function<std::unique_ptr<LoadClient>(ClientLog& log)>;

struct LoadResult {
  double p50 = 0;         // of the round trips, in nanoseconds
  double p99 = 0;         // likewise
  double perRequest = 0;  // time of the run by requests answered in it, in nanoseconds
  double processor = 0;   // processor time by request of both processes, in nanoseconds
};

// One run of `clients` clients against `server`.
LoadResult RunLoad(const ChildProcess& server, int clients, const MakeClient& make);

// Each number's own median.
LoadResult MedianOf(const std::vector<LoadResult>& runs);

}  // namespace bench
