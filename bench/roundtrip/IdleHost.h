// What a host costs that has nothing to do.
#pragma once

#include <ostream>

#include "bench/roundtrip/ChildProcess.h"

namespace bench {

// Prints the processor time of `host` over three seconds with `clients` clients connected that ask nothing, and that
// of those clients. The aim is none.
void MeasureIdleness(std::ostream& out, const ChildProcess& host, int clients);

}  // namespace bench
