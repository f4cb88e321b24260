#include "bench/roundtrip/IdleHost.h"

#include <chrono>
#include <memory>
#include <thread>
#include <vector>

#include "bench/roundtrip/Clients.h"
#include "bench/support/RatioTable.h"
#include "codec/Protocol.h"
#include "platform/ipc/IPCMessageClient.h"
#include "platform/ipc/IPCMessageHub.h"

namespace bench {

namespace {
using namespace std::chrono_literals;
}

void MeasureIdleness(std::ostream& out, const ChildProcess& host, int clients) {
  std::vector<std::unique_ptr<IPCMessageClient>> connected;
  for (int i = 0; i < clients; ++i) {
    connected.push_back(
        std::make_unique<IPCMessageClient>(IPCMessageClient::kAnyClientId, false, false, KT::kPipeName));
    if (!connected.back()->WaitUntilConnected(5s)) GiveUp("the host does not take a connection");
  }
  // By then the hub's timers for the hellos have run out, unused.
  std::this_thread::sleep_for(HubLimits{}.helloTimeout + 200ms);
  const double hostBefore = host.ProcessorTime();
  const double ownBefore = OwnProcessorTime();
  std::this_thread::sleep_for(3s);
  const double hostUsed = host.ProcessorTime() - hostBefore;
  const double ownUsed = OwnProcessorTime() - ownBefore;
  out << "  " << clients << " idle clients, 3 s: host " << FormatNanoseconds(hostUsed) << ", clients "
      << FormatNanoseconds(ownUsed) << "   aim none\n";
}

}  // namespace bench
