// Set, get and delete of one table beside the plain program.
#pragma once

#include <string>
#include <vector>

#include "bench/support/RatioTable.h"

namespace bench {

// `storeFolder`: where the store's engines keep their files; emptied. `plainFolder`: the plain program's. Both have to
// lie on the same disk.
struct StoreFolders {
  std::string storeFolder;
  std::string plainFolder;
};

// Measures the table that holds `Value` (see PlainRows.h) with `rows` rows, the two programs in turns and each first
// every second time. Returns a row for set, get and delete.
template <class Value>
std::vector<RatioRow> CompareTable(const StoreFolders& folders, int rows);

}  // namespace bench
