#include "apps/marnock-host/UnsavedChangeWarning.h"

#include "platform/logging/LogLine.h"

namespace KT {

namespace {

const char* NameOf(StoreTable table) {
  switch (table) {
    case StoreTable::Peer:
      return "peer";
    case StoreTable::Current:
      return "current";
    case StoreTable::Trusted:
      return "trusted";
  }
  return "";
}

}  // namespace

void WarnOfUnsavedChange(StoreTable table, const SaveCounts& saves) {
  platform::LogFailure("KT::WarnOfUnsavedChange", "A change of the ", NameOf(table),
                       " table is answered with 0 and is not on the disk; saves failed since the last good one: ",
                       saves.failedSinceLastSaved);
}

}  // namespace KT
