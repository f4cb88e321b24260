// One database file as store show has it.
#pragma once

#include <optional>
#include <string>

#include "apps/marnockctl/StoreRows.h"
#include "apps/recovery/StoreFile.h"

namespace KT {

struct StoreContent {
  std::string path;                 // Windows path of a file in the database folder, else the path that was given
  const StoreFile* file = nullptr;  // whose table it holds
  std::string problem;              // what is wrong with it, empty for a whole file
  StoreRows rows;                   // of a damaged file those that can be read
};

// `name`: "peer", "current" or "trusted" for the service's own file, the name of a file in the database folder (an
// older copy, one that was set aside), or any path of this machine. A journal beside the file counts as the host's
// start would take it. A file that seems damaged is looked at again, as TryPatiently does: it may just be written.
// Nothing when there is no such file; throws StoreError or SQLite::Exception when it cannot be read.
std::optional<StoreContent> ReadStoreContent(const std::string& name);

}  // namespace KT
