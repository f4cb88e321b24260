#include "apps/recovery/RepairPlan.h"

#include "platform/text/PlenixBase.h"

namespace KT {

namespace {

using Steps = std::vector<RepairStep>;

// FILE whole beside a fresh journal (rule 1), another one or none (rule 2).
RepairPlan PlanForWhole(const Finding& finding) {
  RepairPlan plan;
  plan.rule = finding.journal == JournalKind::Fresh ? 1 : 2;
  if (finding.journal == JournalKind::Fresh) {
    plan.steps.push_back(RepairStep::DeleteJournal);
  } else if (finding.journal == JournalKind::Other) {
    plan.steps = {RepairStep::RollBack, RepairStep::DeleteJournal};
  }
  if (finding.temporary.isThere) {
    plan.steps.push_back(RepairStep::DeleteTemporary);
  }
  plan.condition = plan.steps.empty() ? Condition::Whole : Condition::Repairable;
  return plan;
}

// FILE not whole, FILE.tmp whole. Without anything in FILE that somebody may want to look at it is deleted: it is
// empty, or the fresh journal shows that nothing but a save that was never acknowledged wrote to it.
RepairPlan PlanForRestore(const Finding& finding) {
  const bool isUnfinished = finding.database.bytes == 0 || finding.journal == JournalKind::Fresh;
  RepairPlan plan{3, Condition::Repairable, {}};
  if (finding.journal == JournalKind::Other) {
    plan.steps.push_back(RepairStep::RollBack);
  }
  plan.steps.push_back(isUnfinished ? RepairStep::DeleteFile : RepairStep::SetFileAside);
  if (finding.journal != JournalKind::None) {
    plan.steps.push_back(RepairStep::DeleteJournal);
  }
  plan.steps.push_back(RepairStep::RestoreTemporary);
  return plan;
}

// FILE not whole and no whole FILE.tmp. An empty FILE, or one beside a fresh journal, without FILE.tmp is what the
// first save ever leaves that is cut short: nothing was acknowledged before.
RepairPlan PlanForLoss(const Finding& finding) {
  const bool isUnfinished = finding.database.bytes == 0 || finding.journal == JournalKind::Fresh;
  const bool wasFirstSave = isUnfinished && !finding.temporary.isThere;
  RepairPlan plan{4, wasFirstSave ? Condition::Repairable : Condition::Lost, {}};
  if (finding.journal == JournalKind::Other) {
    plan.steps.push_back(RepairStep::RollBack);
  }
  plan.steps.push_back(RepairStep::SetFileAside);
  if (finding.journal != JournalKind::None) {
    plan.steps.push_back(RepairStep::DeleteJournal);
  }
  if (finding.temporary.isThere) {
    plan.steps.push_back(RepairStep::SetTemporaryAside);
  }
  return plan;
}

RepairPlan PlanForAbsent(const Finding& finding) {
  RepairPlan plan{5, Condition::Absent, {}};
  if (finding.journal != JournalKind::None) {
    plan.steps.push_back(RepairStep::DeleteJournal);
    plan.condition = Condition::Repairable;
  }
  if (finding.temporary.isThere) {
    const bool isWhole = finding.temporary.IsWhole();
    plan.steps.push_back(isWhole ? RepairStep::RestoreTemporary : RepairStep::SetTemporaryAside);
    plan.condition = isWhole ? Condition::Repairable : Condition::Lost;
  }
  return plan;
}

struct StepText {
  const char* toDo;
  const char* done;
  const wchar_t* suffix;  // of the path that the step is about
};

// In the order of RepairStep.
constexpr StepText kStepTexts[] = {
    {"let SQLite roll back ", "let SQLite roll back ", L""},
    {"delete the unfinished ", "deleted the unfinished ", L""},
    {"set aside ", "set aside ", L""},
    {"delete ", "deleted ", L"-journal"},
    {"restore the file from ", "restored the file from ", L".tmp"},
    {"delete the older copy ", "deleted the older copy ", L".tmp"},
    {"set aside ", "set aside ", L".tmp"},
};

const StepText& TextOf(RepairStep step) { return kStepTexts[static_cast<std::size_t>(step)]; }

}  // namespace

RepairPlan PlanFor(const Finding& finding) {
  if (!finding.database.isThere) {
    return PlanForAbsent(finding);
  }
  if (finding.database.IsWhole()) {
    return PlanForWhole(finding);
  }
  return finding.temporary.IsWhole() ? PlanForRestore(finding) : PlanForLoss(finding);
}

bool IsLoss(const RepairPlan& plan, RepairStep step) {
  return plan.condition == Condition::Lost &&
         (step == RepairStep::SetFileAside || step == RepairStep::SetTemporaryAside);
}

std::string CaseOf(const RepairPlan& plan) {
  switch (plan.rule) {
    case 1:
      return "the file is whole beside the journal of an unfinished save";
    case 2:
      return "the file is whole";
    case 3:
      return "the file is not whole, its older copy is";
    case 4:
      return "the file is not whole, and there is no whole older copy";
    default:
      return "the file is absent";
  }
}

std::string ActionLine(const Finding& finding, const RepairPlan& plan, RepairStep step, const std::string& action) {
  return std::string(finding.file->name) + " store: " + action + ": " + CaseOf(plan) +
         (IsLoss(plan, step) ? "; what it held is lost to the service" : "");
}

std::string ToDo(RepairStep step, const std::wstring& path) {
  return TextOf(step).toDo + PlenixBase::UnicodeToUTF8(path + TextOf(step).suffix);
}

std::string Done(RepairStep step, const std::wstring& path) {
  return TextOf(step).done + PlenixBase::UnicodeToUTF8(path + TextOf(step).suffix);
}

}  // namespace KT
