#pragma once

#include <algorithm>
#include <cstdlib>

namespace faults {

// How many calls lie between two that are made to fail: 1, unless the environment's MARNOCK_FAULT_STRIDE says
// otherwise.
inline int Stride() {
  const char* const text = std::getenv("MARNOCK_FAULT_STRIDE");
  return text == nullptr ? 1 : std::max(1, std::atoi(text));
}

}  // namespace faults
