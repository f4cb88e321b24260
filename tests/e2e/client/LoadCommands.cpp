#include <atomic>
#include <condition_variable>
#include <functional>
#include <iostream>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "codec/messages/PeerSumMessages.h"
#include "tests/e2e/client/Commands.h"
#include "tests/e2e/client/Payload.h"
#include "tests/e2e/client/Workload.h"

namespace e2e {

namespace {

constexpr std::size_t kWindow = 16;
constexpr std::chrono::seconds kConnectPatience{60};
// How long a second answer to the last requests is waited for.
constexpr std::chrono::milliseconds kRepetitionPatience{200};

void RunOnThreads(int count, const std::function<void(int)>& body) {
  std::vector<std::thread> threads;
  for (int i = 0; i < count; ++i) {
    threads.emplace_back(body, i);
  }
  for (auto& thread : threads) {
    thread.join();
  }
}

Tally LoadAs(int number, int requests) {
  PipelinedClient client(kWindow);
  if (client.Connect(kConnectPatience)) {
    Workload workload(number);
    for (int i = 0; i < requests; ++i) {
      WorkItem item = workload.Next();
      if (!client.Send(item.code, std::move(item.payload), std::move(item.judge))) {
        break;
      }
    }
    client.Finish();
    std::this_thread::sleep_for(kRepetitionPatience);
  }
  return client.Result();
}

std::string CounterName(int number) { return "counter-" + std::to_string(number); }

Tally Count(PipelinedClient& client, const std::string& udId, int first) {
  const std::string done = Encode(KT::PeerSumSetResponse{});
  const auto judge = [done](const std::string& payload) {
    return payload == done ? std::string() : std::string("not done");
  };
  KT::PeerSumSetRequest request;
  request.udId = udId;
  do {
    request.sumId = std::to_string(first++);
  } while (client.Send(KT::PeerSumSetRequest::kCode, Encode(request), judge));
  return client.Result();
}

Tally Sum(const std::vector<Tally>& tallies) {
  Tally total;
  for (const Tally& tally : tallies) {
    total.sent += tally.sent;
    total.answered += tally.answered;
    total.right += tally.right;
    total.wrong += tally.wrong;
    total.firstFault = total.firstFault.empty() ? tally.firstFault : total.firstFault;
  }
  return total;
}

}  // namespace

int Load(int first, int clients, int requests) {
  std::vector<Tally> tallies(static_cast<std::size_t>(clients));
  RunOnThreads(clients, [&](int number) {
    const int share = requests / clients + (number < requests % clients ? 1 : 0);
    tallies[static_cast<std::size_t>(number)] = LoadAs(first + number, share);
  });
  const Tally total = Sum(tallies);
  std::cout << total.right << " right, " << total.wrong << " wrong, " << total.sent - total.answered << " unanswered, "
            << static_cast<std::size_t>(requests) - total.sent << " unsent\n";
  if (!total.firstFault.empty()) {
    std::cout << total.firstFault << '\n';
  }
  return total.right == static_cast<std::size_t>(requests) && total.wrong == 0 ? 0 : 1;
}

int CountUntilLost(int clients, int first) {
  // All connect before the first one sends: one that came too late for a host that is about to end would wait for the
  // next one.
  std::vector<std::unique_ptr<PipelinedClient>> connected(static_cast<std::size_t>(clients));
  for (auto& client : connected) {
    client = std::make_unique<PipelinedClient>(kWindow);
    if (!client->Connect(kConnectPatience)) {
      std::cerr << "no host\n";
      return 1;
    }
  }
  std::vector<Tally> tallies(static_cast<std::size_t>(clients));
  RunOnThreads(clients, [&](int number) {
    const auto index = static_cast<std::size_t>(number);
    tallies[index] = Count(*connected[index], CounterName(number), first);
  });
  for (int number = 0; number < clients; ++number) {
    // One client's requests are answered in order, so that as many answers came as numbers were stored.
    const Tally& tally = tallies[static_cast<std::size_t>(number)];
    const auto before = static_cast<std::size_t>(first) - 1;
    std::cout << CounterName(number) << ' ' << (tally.answered == 0 ? 0 : before + tally.answered) << ' '
              << before + tally.sent << '\n';
  }
  const Tally total = Sum(tallies);
  std::cerr << total.firstFault;
  return total.wrong == 0 && total.answered > 0 ? 0 : 1;
}

int Crowd(int connections, int places) {
  std::vector<std::unique_ptr<PipelinedClient>> clients(static_cast<std::size_t>(connections));
  for (auto& client : clients) {
    client = std::make_unique<PipelinedClient>(1);
  }
  std::mutex mutex;
  std::condition_variable full;
  int inside = 0;
  std::atomic<int> answered = 0;
  RunOnThreads(connections, [&](int number) {
    auto& client = clients[static_cast<std::size_t>(number)];
    if (!client->Connect(kConnectPatience)) {
      return;
    }
    {
      std::unique_lock lock(mutex);
      ++inside;
      full.notify_all();
      full.wait_for(lock, kConnectPatience, [&] { return inside >= places; });
    }
    Workload workload(number);
    WorkItem item = workload.Next();
    if (client->Send(item.code, std::move(item.payload), std::move(item.judge)) && client->Finish()) {
      answered += client->Result().right == 1 ? 1 : 0;
    }
    client.reset();  // makes room for one that waits
  });
  std::cout << answered << " of " << connections << " answered\n";
  return answered == connections ? 0 : 1;
}

}  // namespace e2e
