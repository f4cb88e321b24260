#include <array>
#include <exception>
#include <functional>
#include <iostream>
#include <map>

#include "bench/roundtrip/Clients.h"
#include "bench/roundtrip/Exchange.h"
#include "bench/roundtrip/IdleHost.h"
#include "bench/support/Machine.h"
#include "bench/support/RatioTable.h"
#include "bench/support/TemporaryFolder.h"
#include "client/RegistryClient.h"
#include "platform/logging/QxLogger.h"

namespace bench {

namespace {

constexpr int kRounds = 7;
constexpr std::array<int, 2> kClientCounts{1, 8};

// Largest ratios aimed at: the round trip of a lone client, and the time by request of many.
constexpr double kLoneAim = 3.0;
constexpr double kManyAim = 2.5;

struct Kind {
  std::string name;
  const ChildProcess* server;
  MakeClient make;
};

void Require(bool condition, const std::string& what) {
  if (!condition) GiveUp(what);
}

void StorePeer() {
  KT::RegistryClient client;
  Require(client.SetPeerDevice(PeerUdId(), PeerSumId()).Succeeded(), "the host does not store the peer");
}

void PrintResults(int clients, const std::vector<Kind>& kinds, const std::map<std::string, LoadResult>& results) {
  std::cout << "\nGetPeerDevice, " << clients << (clients == 1 ? " client\n" : " clients\n");
  for (const Kind& kind : kinds) {
    const LoadResult& result = results.at(kind.name);
    std::cout << "  " << kind.name << ": p50 " << FormatNanoseconds(result.p50) << ", p99 "
              << FormatNanoseconds(result.p99) << ", " << static_cast<int>(1e9 / result.perRequest)
              << " requests/s, processor time by request " << FormatNanoseconds(result.processor) << "\n";
  }
}

// The first kind is what the others are set against.
std::vector<RatioRow> Ratios(int clients, const std::vector<Kind>& kinds,
                             const std::map<std::string, LoadResult>& results) {
  const Kind& raw = kinds.front();
  const LoadResult& baseline = results.at(raw.name);
  const bool lone = clients == 1;
  std::vector<RatioRow> rows;
  for (auto kind = kinds.begin() + 1; kind != kinds.end(); ++kind) {
    const LoadResult& result = results.at(kind->name);
    const auto add = [&](const char* what, double LoadResult::*number, std::optional<double> aim) {
      rows.push_back({what, kind->name, raw.name, result.*number, baseline.*number, aim});
    };
    add("round trip, p50", &LoadResult::p50, lone ? std::optional(kLoneAim) : std::nullopt);
    add("time by request", &LoadResult::perRequest, lone ? std::nullopt : std::optional(kManyAim));
    add("processor time by request", &LoadResult::processor, std::nullopt);
  }
  return rows;
}

void CompareKinds(const std::vector<Kind>& kinds) {
  for (const int clients : kClientCounts) {
    std::map<std::string, std::vector<LoadResult>> runs;
    for (int round = 0; round < kRounds; ++round) {
      for (const Kind& kind : kinds) runs[kind.name].push_back(RunLoad(*kind.server, clients, kind.make));
    }
    std::map<std::string, LoadResult> results;
    for (const auto& [name, resultsOfKind] : runs) results[name] = MedianOf(resultsOfKind);
    PrintResults(clients, kinds, results);
    PrintRatios(std::cout, "  beside the raw round trip", Ratios(clients, kinds, results));
  }
}

void Run() {
  const TemporaryFolder folder;
  UseMachineIn(folder);
  QxLogger::GetInstance().OpenFile(folder.Path() + "/client.log");
  DescribeMachine(std::cout);

  const std::string socket = folder.Path() + "/ping-pong";
  const ChildProcess server({Sibling("ping_pong_server"), socket, std::to_string(RequestFrame().size()),
                             std::to_string(AnswerFrame().size())});
  const ChildProcess host({Sibling("marnock-host"), "--log", folder.Path() + "/host.log"});
  StorePeer();

  std::cout << "\nAn idle host\n";
  for (const int clients : {0, 8}) MeasureIdleness(std::cout, host, clients);

  CompareKinds({{"raw", &server, [&](ClientLog& log) { return MakeRawClient(socket, log); }},
                {"callbacks", &host, MakeCallbackClient},
                {"RegistryClient", &host, MakeTypedClient}});
}

}  // namespace

}  // namespace bench

int main() {
  try {
    bench::Run();
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "roundtrip_bench: " << error.what() << std::endl;
    return 1;
  }
}
