// What a row costs in memory.
#pragma once

#include <vector>

#include "bench/support/RatioTable.h"

namespace bench {

// Adds rows to each engine, without saving, and sets the growth of the heap by row against the bytes of the row's
// values. The engines' files must not exist.
std::vector<RatioRow> MeasureRowMemory();

}  // namespace bench
