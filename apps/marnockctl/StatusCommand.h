// marnockctl status.
#pragma once

#include "apps/marnockctl/CommandLine.h"
#include "apps/marnockctl/Reporter.h"
#include "client/RegistryClient.h"

namespace KT {

// Asks the host, prints and returns how the program ends. Changes that are not on the disk are complained about, and
// are no failure of the command.
ExitStatus Run(const HostStatus& command, RegistryClient& client, Reporter& reporter);

}  // namespace KT
