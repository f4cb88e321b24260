#include <algorithm>
#include <atomic>
#include <chrono>
#include <iostream>
#include <memory>
#include <thread>
#include <vector>

#include "tests/e2e/client/BadFrame.h"
#include "tests/e2e/client/Commands.h"
#include "tests/e2e/client/Workload.h"

namespace e2e {

namespace {

constexpr std::size_t kWindow = 8;
constexpr std::chrono::seconds kConnectPatience{60};
// As many as the lists that the service can answer have room for.
constexpr int kDeviceOwners = 8;
// How long a connection lasts before a bad frame ends it.
constexpr int kRequestsPerConnection = 50;

struct SoakTally {
  std::atomic<std::size_t> right = 0;
  std::atomic<std::size_t> faults = 0;
  std::atomic<std::size_t> badFrames = 0;
};

// Requests over one connection; false when one of them is not answered rightly.
bool RunConnection(Workload& workload, int requests, SoakTally& tally) {
  PipelinedClient client(kWindow);
  bool isSound = client.Connect(kConnectPatience);
  for (int i = 0; isSound && i < requests; ++i) {
    WorkItem item = workload.Next();
    isSound = client.Send(item.code, std::move(item.payload), std::move(item.judge));
  }
  isSound = isSound && client.Finish();
  const Tally result = client.Result();
  tally.right += result.right;
  if (!result.firstFault.empty()) {
    std::cerr << result.firstFault + "\n";
  }
  return isSound && result.right == static_cast<std::size_t>(requests) && result.wrong == 0;
}

void RunClient(int number, int requests, SoakTally& tally) {
  Workload workload(number, number < kDeviceOwners ? Workload::Changes::All : Workload::Changes::Peers);
  for (int connection = 0; requests > 0; ++connection) {
    const int share = std::min(requests, kRequestsPerConnection);
    requests -= share;
    tally.faults += RunConnection(workload, share, tally) ? 0 : 1;
    const bool isClosed = SendBadFrame(number + connection);
    tally.badFrames += isClosed ? 1 : 0;
    tally.faults += isClosed ? 0 : 1;
  }
}

}  // namespace

int Soak(int clients, int requests) {
  SoakTally tally;
  std::vector<std::thread> threads;
  for (int number = 0; number < clients; ++number) {
    const int share = requests / clients + (number < requests % clients ? 1 : 0);
    threads.emplace_back([number, share, &tally] { RunClient(number, share, tally); });
  }
  for (auto& thread : threads) {
    thread.join();
  }
  std::cout << tally.right << " right, " << tally.badFrames << " bad frames, " << tally.faults << " faults\n";
  return tally.faults == 0 ? 0 : 1;
}

}  // namespace e2e
