// How a table's saves went.
#pragma once

#include <cstdint>

namespace KT {

enum class StoreTable { Peer, Current, Trusted };

struct SaveCounts {
  std::uint64_t saved = 0;                 // saves that reached the disk
  std::uint64_t failedSinceLastSaved = 0;  // while it is not 0, memory may hold what the disk does not
};

// Told of each change that is answered with success although its save failed, with the counts of its table after that.
// Runs on the thread that makes the change, after the save's own log line; must not throw.
using UnsavedChangeObserver = void (*)(StoreTable table, const SaveCounts& saves);

}  // namespace KT
