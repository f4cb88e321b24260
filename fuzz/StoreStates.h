// Database folders as kills leave them: what the inputs of StoreFileFuzz begin from, so that they get past SQLite's
// first look.
#pragma once

#include <vector>

#include "tests/support/MemoryDisk.h"

namespace fuzz {

// The folder at the start of, after each change to the disk during, and after two saves of the trusted or of the peer
// table, without repetitions. The first one is empty.
std::vector<support::DiskImage> TrustedStates();
std::vector<support::DiskImage> PeerStates();

}  // namespace fuzz
