// marnockctl trusted|current set|get|list|delete.
#pragma once

#include "apps/marnockctl/CommandLine.h"
#include "apps/marnockctl/DeviceFamily.h"
#include "apps/marnockctl/Reporter.h"
#include "client/RegistryClient.h"

namespace KT {

// Each checks its input, asks the service, prints and returns how the program ends. For both families.
template <class Family>
ExitStatus Run(const DeviceSet<Family>& command, RegistryClient& client, Reporter& reporter);
template <class Family>
ExitStatus Run(const DeviceGet<Family>& command, RegistryClient& client, Reporter& reporter);
template <class Family>
ExitStatus Run(const DeviceList<Family>& command, RegistryClient& client, Reporter& reporter);
template <class Family>
ExitStatus Run(const DeviceDelete<Family>& command, RegistryClient& client, Reporter& reporter);

}  // namespace KT
