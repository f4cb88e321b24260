// What the figures were taken on.
#pragma once

#include <ostream>

namespace bench {

// One line: processor, number of cores, the system and the load average at this moment. A load well above the number
// of busy threads of the benchmark itself means that the figures are not worth keeping.
void DescribeMachine(std::ostream& out);

}  // namespace bench
