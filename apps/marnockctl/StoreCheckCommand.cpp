#include "apps/marnockctl/StoreCheckCommand.h"

#include <algorithm>

#include "apps/marnockctl/StoreFolder.h"
#include "apps/marnockctl/StoreLook.h"
#include "apps/marnockctl/StoreReport.h"
#include "apps/recovery/StoreError.h"

namespace KT {

namespace {

constexpr const char* kHostRuns =
    "a host is running: the next change of a table writes its file anew, and the host's next start repairs the rest";

bool Any(const std::vector<StoreLook>& looks, Condition condition) {
  return std::any_of(looks.begin(), looks.end(), [condition](const StoreLook& look) {
    return !look.unreadable.has_value() && !look.isBeingSaved && look.plan.condition == condition;
  });
}

ExitStatus StatusOf(const std::vector<StoreLook>& looks) {
  if (std::any_of(looks.begin(), looks.end(), [](const StoreLook& look) { return look.unreadable.has_value(); })) {
    return ExitStatus::Undecided;
  }
  if (Any(looks, Condition::Lost)) {
    return ExitStatus::Lost;
  }
  return Any(looks, Condition::Repairable) ? ExitStatus::NeedsRepair : ExitStatus::Done;
}

const char* SummaryOf(ExitStatus status, const std::vector<StoreLook>& looks) {
  switch (status) {
    case ExitStatus::Done:
      return std::any_of(looks.begin(), looks.end(), [](const StoreLook& look) { return look.isBeingSaved; })
                 ? "nothing is wrong; a host is saving at this moment"
                 : "every file is whole, or was never written";
    case ExitStatus::NeedsRepair:
      return "a save was cut short; nothing is lost, and a repair or the host's next start mends it";
    case ExitStatus::Lost:
      return "something that was saved cannot be brought back";
    default:
      return "not every file can be read";
  }
}

// Asks the hub, since trying for its claim could keep a host from starting at that moment.
bool IsHostRunning(RegistryClient& client) { return client.GetHostStatus().status != CallStatus::NoService; }

}  // namespace

ExitStatus Run(const StoreCheck&, RegistryClient& client, Reporter& reporter) {
  try {
    const bool isHostRunning = IsHostRunning(client);
    const auto looks = LookAtStore(StoreFolder(), &SleepFor);
    const ExitStatus status = StatusOf(looks);
    if (reporter.Json()) {
      reporter.Print(KT::Json{{"hostRunning", isHostRunning}, {"files", StoreJson(looks)}});
    } else {
      reporter.Print(StoreText(looks) + "\n\n" + SummaryOf(status, looks));
    }
    if (isHostRunning && status != ExitStatus::Done) {
      reporter.Complain(kHostRuns);
    }
    return status;
  } catch (const StoreError& error) {
    reporter.Complain(error.what());
    return ExitStatus::Undecided;
  }
}

}  // namespace KT
