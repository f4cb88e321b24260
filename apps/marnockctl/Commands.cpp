#include "apps/marnockctl/Commands.h"

#include <utility>

#include "apps/marnockctl/CommandLine.h"
#include "apps/marnockctl/DeviceCommands.h"
#include "apps/marnockctl/PeerCommands.h"
#include "apps/marnockctl/Reporter.h"
#include "apps/marnockctl/StatusCommand.h"
#include "apps/marnockctl/StoreCheckCommand.h"
#include "apps/marnockctl/StoreRepairCommand.h"
#include "apps/marnockctl/StoreShowCommand.h"
#include "client/RegistryClient.h"

namespace KT {

ExitStatus RunMarnockctl(std::vector<std::string> arguments, std::ostream& out, std::ostream& err,
                         const std::wstring& pipeName) {
  ExitStatus status = ExitStatus::Done;
  const auto invocation = ParseCommandLine(std::move(arguments), out, err, status);
  if (!invocation.has_value()) {
    return status;
  }
  RegistryClientOptions options;
  options.pipeName = pipeName;
  options.pkgName = invocation->options.pkgName;
  options.timeout = invocation->options.timeout;
  options.waitForService = false;
  RegistryClient client(options);
  Reporter reporter(out, err, invocation->options.json);
  return std::visit([&](const auto& command) { return Run(command, client, reporter); }, invocation->command);
}

}  // namespace KT
