#include "apps/marnockctl/StoreFolder.h"

#include "apps/recovery/StoreError.h"
#include "host/Utils.h"
#include "persistence/DatabaseFiles.h"

namespace KT {

std::wstring StoreFolder() {
  std::wstring folder = Utils::GetCurrUserDefinePath(kDatabaseFolder);
  if (folder.empty()) {
    throw StoreError("the system does not say who the user at the console is, so the database folder is not known");
  }
  return folder;
}

}  // namespace KT
