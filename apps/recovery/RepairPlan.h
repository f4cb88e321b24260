// What a database file needs, decided from what was found; nothing is done here.
#pragma once

#include <string>
#include <vector>

#include "apps/recovery/Finding.h"

namespace KT {

// FILE is the database file. Its steps are carried out in the order of a plan; each may be the last one before a crash,
// and the plan that is made afterwards then leads to the same end.
enum class RepairStep {
  RollBack,           // SQLite opens FILE and applies its journal
  DeleteFile,         // FILE, where it is empty or a copy that was never finished
  SetFileAside,       // FILE becomes FILE.bad-<UTC time>
  DeleteJournal,      // FILE-journal, where SQLite has not done that itself
  RestoreTemporary,   // FILE.tmp becomes FILE
  DeleteTemporary,    // FILE.tmp, where FILE is whole and therefore newer
  SetTemporaryAside,  // FILE.tmp becomes FILE.tmp.bad-<UTC time>
};

enum class Condition {
  Absent,      // nothing was ever saved
  Whole,       // and nothing lies beside it
  Repairable,  // a save was cut short; nothing that was acknowledged is lost
  Lost,        // what was saved cannot be brought back
};

struct RepairPlan {
  int rule = 0;  // 1 to 5, see docs/durability.md
  Condition condition = Condition::Whole;
  std::vector<RepairStep> steps;  // empty for Absent and Whole
};

RepairPlan PlanFor(const Finding& finding);

// Whether the step is the one by which a plan gives up what was saved.
bool IsLoss(const RepairPlan& plan, RepairStep step);

// A line about a step of the plan: whose store, the action in the words given, the rule's case and what is lost.
std::string ActionLine(const Finding& finding, const RepairPlan& plan, RepairStep step, const std::string& action);

// What the rule's case is, for example "the file is whole beside the journal of an unfinished save".
std::string CaseOf(const RepairPlan& plan);

// A step as a command, "delete C:\...db-journal", and as it was done, "deleted C:\...db-journal".
std::string ToDo(RepairStep step, const std::wstring& path);
std::string Done(RepairStep step, const std::wstring& path);

}  // namespace KT
