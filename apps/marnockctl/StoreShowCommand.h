// marnockctl store show.
#pragma once

#include "apps/marnockctl/CommandLine.h"
#include "apps/marnockctl/Reporter.h"
#include "client/RegistryClient.h"

namespace KT {

// Prints the rows of a database file, of an older copy or of one that was set aside, from a copy in memory: nothing on
// the disk is opened by SQLite. Of a damaged file what can be read of it (NeedsRepair; Lost when that is nothing).
// NotFound for a file that is not there, Undecided for one that cannot be read.
ExitStatus Run(const StoreShow& command, RegistryClient& client, Reporter& reporter);

}  // namespace KT
