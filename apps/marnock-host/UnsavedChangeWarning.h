// The log line about a change that was answered with 0 and is not on the disk.
#pragma once

#include "persistence/SaveCounts.h"

namespace KT {

// Logs it at level 4. An UnsavedChangeObserver.
void WarnOfUnsavedChange(StoreTable table, const SaveCounts& saves);

}  // namespace KT
