// What a hub counts.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>

#include "platform/ipc/IPCMessageHub.h"

namespace platform::ipc {

// Counted on the hub's thread, read on any.
class HubTally {
 public:
  HubCounters Counters() const { return {connections_, mostConnections_, refused_, cutOff_, framesRouted_}; }

  void SetConnections(std::size_t open) {
    connections_ = open;
    mostConnections_ = std::max<std::uint64_t>(mostConnections_, open);
  }
  void Refuse() { ++refused_; }
  void CutOff() { ++cutOff_; }
  void RouteFrame() { ++framesRouted_; }

 private:
  using Counter = std::atomic<std::uint64_t>;

  Counter connections_ = 0;
  Counter mostConnections_ = 0;
  Counter refused_ = 0;
  Counter cutOff_ = 0;
  Counter framesRouted_ = 0;
};

}  // namespace platform::ipc
