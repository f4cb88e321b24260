// marnockctl store check.
#pragma once

#include "apps/marnockctl/CommandLine.h"
#include "apps/marnockctl/Reporter.h"
#include "client/RegistryClient.h"

namespace KT {

// Looks at the database files, beside a running host or without one, prints what it finds and changes nothing. Done
// when every file is whole or absent; else NeedsRepair, Lost or, where a file cannot be read, Undecided.
ExitStatus Run(const StoreCheck& command, RegistryClient& client, Reporter& reporter);

}  // namespace KT
