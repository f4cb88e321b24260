#include "apps/marnock-host/UnsavedChangeWarning.h"

#include <exception>

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
  try {
    platform::LogFailure("KT::WarnOfUnsavedChange", "A change of the ", NameOf(table),
                         " table is answered with 0 and is not on the disk; saves failed since the last good one: ",
                         saves.failedSinceLastSaved);
  } catch (const std::exception&) {
    // No memory for a line of text: the counts still tell.
  }
}

}  // namespace KT
