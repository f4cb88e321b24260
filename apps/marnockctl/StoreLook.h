// Looking at the database files beside a host that may be saving them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/recovery/Finding.h"
#include "apps/recovery/RepairPlan.h"

namespace KT {

// One database file and what belongs to it.
struct StoreLook {
  Finding finding;
  RepairPlan plan;                        // what the finding calls for
  std::optional<std::string> unreadable;  // why there is no finding; only its file and path are set then
  bool isBeingSaved = false;              // not whole, but it changes from one look to the next
  std::vector<std::string> setAside;      // names of what was set aside before, in order
};

// Waits as TryPatiently does for a moment at which neither a journal nor an older copy lies beside the file at `path`:
// none of its saves is under way then. Nothing is opened: where Windows keeps the name of a deleted file until its last
// reader has closed it, a reader of a journal can make a save fail.
void WaitForQuiet(const std::wstring& path, const Sleep& sleep);

// Looks at each file at a quiet moment and only reads. A save in progress looks like one that was cut short, but for
// the next look: a file that is not whole is looked at again, as TryPatiently does, and the last look counts. One that
// has changed even then is being saved over and over by a busy host. Throws StoreError when the folder cannot be read.
std::vector<StoreLook> LookAtStore(const std::wstring& folder, const Sleep& sleep);

}  // namespace KT
