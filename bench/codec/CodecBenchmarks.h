// The two halves of the codec's benchmark.
#pragma once

#include "bench/support/ComparisonSuite.h"

namespace bench {

// Integers and strings of the data stream beside memcpy of the same bytes.
void AddPrimitives(ComparisonSuite& suite);

// Messages with one record of each profile and with a list of 20, beside PositionalCodec.h and memcpy of the same
// bytes. Throws std::logic_error when the two codecs do not produce the same bytes: there is nothing to compare then.
void AddRecords(ComparisonSuite& suite);

}  // namespace bench
