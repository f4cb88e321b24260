#include "apps/marnockctl/StoreRepairCommand.h"

#include <system_error>
#include <utility>

#include "apps/json/ByteText.h"
#include "apps/marnockctl/StoreFolder.h"
#include "apps/recovery/Finding.h"
#include "apps/recovery/RepairPlan.h"
#include "apps/recovery/StoreError.h"
#include "apps/recovery/StoreRepair.h"
#include "platform/ipc/IPCMessageHub.h"
#include "platform/text/PlenixBase.h"

namespace KT {

namespace {

// Tells of each action at once, and in JSON of all of them in the end.
class Actions {
 public:
  explicit Actions(Reporter& reporter) : reporter_(reporter) {}

  void Tell(const std::string& text, bool isLoss) {
    actions_.push_back(KT::Json{{"text", ToJson(text)}, {"loss", isLoss}});
    isAnyLoss_ = isAnyLoss_ || isLoss;
    if (!reporter_.Json()) {
      reporter_.Print(text);
    }
  }

  bool IsAny() const { return !actions_.empty(); }
  bool IsAnyLoss() const { return isAnyLoss_; }

  void PrintJson(bool isDryRun) {
    if (reporter_.Json()) {
      reporter_.Print(KT::Json{{"dryRun", isDryRun}, {"loss", isAnyLoss_}, {"actions", actions_}});
    }
  }

 private:
  Reporter& reporter_;
  KT::Json actions_ = KT::Json::array();
  bool isAnyLoss_ = false;
};

void TellWhatToDo(const std::wstring& folder, Actions& actions) {
  for (const StoreFile& file : StoreFiles()) {
    const Finding finding = Inspect(file, folder, &SleepFor);
    InsistOnNoLock(finding, &SleepFor);
    const RepairPlan plan = PlanFor(finding);
    for (const RepairStep step : plan.steps) {
      actions.Tell(ActionLine(finding, plan, step, "would " + ToDo(step, finding.path)), IsLoss(plan, step));
    }
  }
}

void Repair(const std::wstring& folder, Actions& actions) {
  RepairHooks hooks = HostHooks();
  hooks.tell = [&actions](const std::string& text, bool isLoss) { actions.Tell(text, isLoss); };
  bool isAnyLoss = false;
  if (const auto refusal = RepairStore(folder, hooks, isAnyLoss); refusal.has_value()) {
    throw StoreError(*refusal);
  }
}

ExitStatus StatusOf(const Actions& actions, bool isDryRun) {
  if (actions.IsAnyLoss()) {
    return ExitStatus::Lost;
  }
  return isDryRun && actions.IsAny() ? ExitStatus::NeedsRepair : ExitStatus::Done;
}

}  // namespace

ExitStatus Run(const StoreRepair& command, RegistryClient& client, Reporter& reporter) {
  Actions actions(reporter);
  try {
    IPCMessageHub hub(client.PipeName());
    if (!hub.Claim()) {
      reporter.Complain("a host is running on " + PlenixBase::UnicodeToUTF8(client.PipeName()) +
                        ": it would overwrite what is repaired. Stop it first; at its next start it repairs by itself");
      return ExitStatus::Undecided;
    }
    const std::wstring folder = StoreFolder();
    command.dryRun ? TellWhatToDo(folder, actions) : Repair(folder, actions);
  } catch (const std::runtime_error& error) {  // StoreError, or std::system_error where the claim is not decided
    actions.PrintJson(command.dryRun);
    reporter.Complain(error.what());
    return ExitStatus::Undecided;
  }
  actions.PrintJson(command.dryRun);
  if (!reporter.Json() && !actions.IsAny()) {
    reporter.Print(std::string("nothing to repair"));
  }
  return StatusOf(actions, command.dryRun);
}

}  // namespace KT
