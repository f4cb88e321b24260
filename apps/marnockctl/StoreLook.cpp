#include "apps/marnockctl/StoreLook.h"

#include <algorithm>

#include "apps/recovery/StoreError.h"
#include "persistence/DatabaseFiles.h"
#include "platform/OperatingSystem.h"
#include "platform/text/PlenixBase.h"

namespace KT {

namespace {

using platform::OperatingSystem;

// Sorted. A folder that is not there has none.
std::vector<std::string> FilesIn(const std::wstring& folder) {
  std::vector<std::wstring> wide;
  if (!OperatingSystem::Get().ListFiles(folder, &wide)) {
    const platform::Dword error = OperatingSystem::Get().GetLastError();
    if (error != platform::kErrorFileNotFound && error != platform::kErrorPathNotFound) {
      throw StoreError("the folder " + PlenixBase::UnicodeToUTF8(folder) + " cannot be read: " + MeaningOf(error));
    }
    return {};
  }
  std::vector<std::string> names;
  names.reserve(wide.size());
  for (const std::wstring& name : wide) {
    names.push_back(PlenixBase::UnicodeToUTF8(name));
  }
  std::sort(names.begin(), names.end());
  return names;
}

void Look(const StoreFile& file, const std::wstring& folder, const Sleep& sleep, StoreLook& look) {
  try {
    look.finding = Inspect(file, folder, sleep);
    look.plan = PlanFor(look.finding);
    look.unreadable.reset();
  } catch (const StoreError& error) {
    look.finding = {};
    look.finding.file = &file;
    look.finding.path = folder + PlenixBase::UTF8ToUnicode(file.fileName);
    look.unreadable = error.what();
  }
}

bool IsSame(const FoundDatabase& one, const FoundDatabase& other) {
  return one.isThere == other.isThere && one.fingerprint == other.fingerprint;
}

bool IsSame(const Finding& one, const Finding& other) {
  return one.journal == other.journal && IsSame(one.database, other.database) && IsSame(one.temporary, other.temporary);
}

// Looks again. Whether that is enough: a save is never seen as no file at all twice in a row.
bool LookAgain(const std::wstring& folder, const Sleep& sleep, StoreLook& look) {
  const auto isDone = [&look](Condition condition) {
    return look.unreadable.has_value() || look.plan.condition == condition;
  };
  if (isDone(Condition::Whole)) {
    return true;
  }
  const bool wasAbsent = isDone(Condition::Absent);
  const Finding before = look.finding;
  Look(*before.file, folder, sleep, look);
  const bool isEnough = isDone(Condition::Whole) || (wasAbsent && isDone(Condition::Absent));
  look.isBeingSaved = !isEnough && !IsSame(before, look.finding);
  return isEnough;
}

}  // namespace

void WaitForQuiet(const std::wstring& path, const Sleep& sleep) {
  TryPatiently(sleep, [&path] { return !FileExists(JournalPath(path)) && !FileExists(TemporaryPath(path)); });
}

std::vector<StoreLook> LookAtStore(const std::wstring& folder, const Sleep& sleep) {
  std::vector<StoreLook> looks(StoreFiles().size());
  for (std::size_t i = 0; i < looks.size(); ++i) {
    const StoreFile& file = StoreFiles()[i];
    WaitForQuiet(folder + PlenixBase::UTF8ToUnicode(file.fileName), sleep);
    Look(file, folder, sleep, looks[i]);
  }
  // All files in one round, so that three that are not whole take no longer than one.
  TryPatiently(sleep, [&] {
    bool isEnough = true;
    for (StoreLook& look : looks) {
      isEnough = LookAgain(folder, sleep, look) && isEnough;
    }
    return isEnough;
  });
  const std::vector<std::string> names = FilesIn(folder);
  for (StoreLook& look : looks) {
    const std::string file = look.finding.file->fileName;
    std::copy_if(names.begin(), names.end(), std::back_inserter(look.setAside), [&](const std::string& name) {
      return name.starts_with(file + ".bad-") || name.starts_with(file + ".tmp.bad-");
    });
  }
  return looks;
}

}  // namespace KT
