// marnockctl store repair.
#pragma once

#include "apps/marnockctl/CommandLine.h"
#include "apps/marnockctl/Reporter.h"
#include "client/RegistryClient.h"

namespace KT {

// Mends the database files as the host does at its start, and prints each action once it is done. Holds the claim of
// the client's pipe meanwhile, so that no host starts, and refuses (Undecided) while one runs. Done when nothing was
// lost, else Lost. A dry run changes nothing, tells what would be done, and ends with NeedsRepair where that is
// anything.
ExitStatus Run(const StoreRepair& command, RegistryClient& client, Reporter& reporter);

}  // namespace KT
