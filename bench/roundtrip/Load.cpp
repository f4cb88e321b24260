#include "bench/roundtrip/Load.h"

#include <thread>

namespace bench {

namespace {

using namespace std::chrono_literals;

constexpr auto kWarmUp = 100ms;
constexpr auto kMeasured = 700ms;

// More than a client can be answered in one run, so that no list grows while it runs.
constexpr std::size_t kMostRequests = 200'000;

double Median(const std::vector<LoadResult>& runs, double LoadResult::*number) {
  Samples samples;
  for (const LoadResult& run : runs) samples.Add(run.*number);
  return samples.Median();
}

}  // namespace

ClientLog::ClientLog(const std::atomic<Phase>& phase) : phase_(phase) { times_.Reserve(kMostRequests); }

void ClientLog::Answered() {
  if (phase_.load(std::memory_order_relaxed) == Phase::Measure) {
    times_.Add(std::chrono::duration<double, std::nano>(Clock::now() - sent_).count());
  }
}

LoadResult RunLoad(const ChildProcess& server, int clients, const MakeClient& make) {
  std::atomic<ClientLog::Phase> phase{ClientLog::Phase::WarmUp};
  std::vector<std::unique_ptr<ClientLog>> logs;
  std::vector<std::unique_ptr<LoadClient>> running;
  for (int i = 0; i < clients; ++i) {
    logs.push_back(std::make_unique<ClientLog>(phase));
    running.push_back(make(*logs.back()));
  }
  for (const auto& client : running) client->Start();
  std::this_thread::sleep_for(kWarmUp);

  const double processorBefore = server.ProcessorTime() + OwnProcessorTime();
  const auto start = ClientLog::Clock::now();
  phase = ClientLog::Phase::Measure;
  std::this_thread::sleep_for(kMeasured);
  phase = ClientLog::Phase::Stop;
  const double elapsed = std::chrono::duration<double, std::nano>(ClientLog::Clock::now() - start).count();
  const double processor = server.ProcessorTime() + OwnProcessorTime() - processorBefore;
  for (const auto& client : running) client->Join();

  Samples all;
  for (const auto& log : logs) all.Add(log->Times());
  const auto requests = static_cast<double>(all.Count());
  return {all.Percentile(50), all.Percentile(99), elapsed / requests, processor / requests};
}

LoadResult MedianOf(const std::vector<LoadResult>& runs) {
  return {Median(runs, &LoadResult::p50), Median(runs, &LoadResult::p99), Median(runs, &LoadResult::perRequest),
          Median(runs, &LoadResult::processor)};
}

}  // namespace bench
