// marnockctl peer set|get|delete.
#pragma once

#include "apps/marnockctl/CommandLine.h"
#include "apps/marnockctl/Reporter.h"
#include "client/RegistryClient.h"

namespace KT {

// Each checks its input, asks the service, prints and returns how the program ends.
ExitStatus Run(const PeerSet& command, RegistryClient& client, Reporter& reporter);
ExitStatus Run(const PeerGet& command, RegistryClient& client, Reporter& reporter);
ExitStatus Run(const PeerDelete& command, RegistryClient& client, Reporter& reporter);

}  // namespace KT
