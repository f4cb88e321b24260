#include "apps/recovery/StoreRepair.h"

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Exception.h>
#include <SQLiteCpp/Statement.h>
#include <sqlite3.h>

#include "apps/recovery/Finding.h"
#include "apps/recovery/RepairPlan.h"
#include "apps/recovery/StoreError.h"
#include "apps/recovery/UtcStamp.h"
#include "platform/OperatingSystem.h"
#include "platform/logging/LogLine.h"
#include "platform/text/PlenixBase.h"

namespace KT {

namespace {

using platform::OperatingSystem;

// One repair settles a file; the next look only confirms it. More are needed when somebody else changes files
// meanwhile.
constexpr int kMaxRepairs = 3;

[[noreturn]] void Refuse(const std::wstring& path, const char* what, platform::Dword error) {
  throw StoreError(PlenixBase::UnicodeToUTF8(path) + " cannot be " + what + ": " + MeaningOf(error) +
                   ". End the program that holds it and try again.");
}

// Carries out steps on one file.
class FileRepair {
 public:
  FileRepair(const std::wstring& folder, const std::wstring& path, const RepairHooks& hooks)
      : folder_(folder), path_(path), hooks_(hooks) {}

  // Returns what it did, in words; nothing when there was nothing left to do.
  std::optional<std::string> Run(RepairStep step) {
    std::string done = Done(step, path_);
    bool hasChanged = true;
    switch (step) {
      case RepairStep::RollBack:
        RollBack();
        break;
      case RepairStep::DeleteFile:
        hasChanged = Delete(path_);
        break;
      case RepairStep::SetFileAside:
        done += " as " + SetAside(path_);
        break;
      case RepairStep::DeleteJournal:
        hasChanged = Delete(JournalPath(path_));
        break;
      case RepairStep::RestoreTemporary:
        Restore();
        break;
      case RepairStep::DeleteTemporary:
        hasChanged = Delete(TemporaryPath(path_));
        break;
      case RepairStep::SetTemporaryAside:
        done += " as " + SetAside(TemporaryPath(path_));
        break;
    }
    Sync();
    return hasChanged ? std::optional(done) : std::nullopt;
  }

 private:
  // SQLite applies a journal at the first read. A file that is no database even then is dealt with by later steps.
  void RollBack() {
    try {
      SQLite::Database database(OperatingSystem::Get().SqliteFileName(PlenixBase::UnicodeToUTF8(path_)),
                                SQLite::OPEN_READWRITE);
      SQLite::Statement(database, "SELECT count(*) FROM sqlite_master").executeStep();
    } catch (const SQLite::Exception& error) {
      if (error.getErrorCode() != SQLITE_CORRUPT && error.getErrorCode() != SQLITE_NOTADB) {
        throw StoreError(PlenixBase::UnicodeToUTF8(path_) + " cannot be rolled back: " + error.what() +
                         ". End the program that works on it, make room on the disk, and try again.");
      }
    }
  }

  // False when it was gone already.
  bool Delete(const std::wstring& path) {
    platform::Dword error = 0;
    const bool decided = TryPatiently(hooks_.sleep, [&] {
      error = OperatingSystem::Get().DeleteFileW(path) ? 0 : OperatingSystem::Get().GetLastError();
      return error == 0 || error == platform::kErrorFileNotFound;
    });
    if (!decided) {
      Refuse(path, "deleted", error);
    }
    return error == 0;
  }

  // False when the new name is taken.
  bool TryMove(const std::wstring& from, const std::wstring& to) {
    platform::Dword error = 0;
    const bool decided = TryPatiently(hooks_.sleep, [&] {
      error = OperatingSystem::Get().MoveFileW(from, to) ? 0 : OperatingSystem::Get().GetLastError();
      return error == 0 || error == platform::kErrorAlreadyExists;
    });
    if (!decided) {
      Refuse(from, "renamed", error);
    }
    return error == 0;
  }

  void Restore() {
    if (!TryMove(TemporaryPath(path_), path_)) {
      Refuse(TemporaryPath(path_), "renamed", platform::kErrorAlreadyExists);
    }
  }

  // Returns the new name, without its folder. Nothing that was set aside before is replaced.
  std::string SetAside(const std::wstring& path) {
    const std::wstring suffix = L".bad-" + PlenixBase::UTF8ToUnicode(UtcStamp(hooks_.now()));
    std::wstring name = path + suffix;
    for (int number = 2; !TryMove(path, name); ++number) {
      name = path + suffix + L"-" + std::to_wstring(number);
    }
    return PlenixBase::UnicodeToUTF8(name.substr(folder_.size()));
  }

  void Sync() {
    if (!OperatingSystem::Get().SyncDirectory(folder_)) {
      throw StoreError("changes of names in " + PlenixBase::UnicodeToUTF8(folder_) + " cannot be put on the disk: " +
                       MeaningOf(OperatingSystem::Get().GetLastError()) + ". Check the disk and try again.");
    }
  }

  const std::wstring& folder_;
  const std::wstring& path_;
  const RepairHooks& hooks_;
};

// Carries out the plan and tells each action.
void RunPlan(const Finding& finding, const RepairPlan& plan, const std::wstring& folder, const RepairHooks& hooks) {
  FileRepair repair(folder, finding.path, hooks);
  for (const RepairStep step : plan.steps) {
    if (const auto done = repair.Run(step); done.has_value()) {
      hooks.tell(ActionLine(finding, plan, step, *done), IsLoss(plan, step));
    }
  }
}

// Returns whether anything was lost.
bool RepairFile(const StoreFile& file, const std::wstring& folder, const RepairHooks& hooks) {
  bool loss = false;
  for (int repairs = 0; repairs <= kMaxRepairs; ++repairs) {
    const Finding finding = Inspect(file, folder, hooks.sleep);
    InsistOnNoLock(finding, hooks.sleep);
    const RepairPlan plan = PlanFor(finding);
    if (plan.steps.empty()) {
      return loss;
    }
    loss = loss || plan.condition == Condition::Lost;
    RunPlan(finding, plan, folder, hooks);
  }
  throw StoreError(PlenixBase::UnicodeToUTF8(folder) + file.fileName +
                   " does not stay repaired. End the program that changes it and try again.");
}

}  // namespace

RepairHooks HostHooks() {
  return {&SleepFor, [] { return std::chrono::system_clock::now(); },
          [](const std::string& text, bool isLoss) {
            constexpr const char* kFunction = "KT::RepairStore";
            if (isLoss) {
              platform::LogFailure(kFunction, "[KTData] Recovery of the ", text);
            } else {
              platform::LogProgress(kFunction, "[KTData] Recovery of the ", text);
            }
          }};
}

std::optional<std::string> RepairStore(const std::wstring& folder, const RepairHooks& hooks, bool& anyLoss) {
  anyLoss = false;
  try {
    for (const StoreFile& file : StoreFiles()) {
      anyLoss = RepairFile(file, folder, hooks) || anyLoss;
    }
  } catch (const StoreError& error) {
    return error.what();
  }
  return std::nullopt;
}

}  // namespace KT
