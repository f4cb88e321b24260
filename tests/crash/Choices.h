// Which of the many states that a power cut may leave are looked at.
#pragma once

#include <cstddef>
#include <functional>
#include <random>

#include "tests/crash/PowerCut.h"

namespace crash {

// How many states one power cut is worth: all, where they are not more than `all`; otherwise the regular ones (nothing,
// everything, each beginning, each single change present and absent) and `random` others.
struct Effort {
  std::size_t all;
  std::size_t random;
};

// Calls `visit` with each state chosen that is possible.
void ForEachChoice(const PowerCut& cut, const Effort& effort, std::mt19937& random,
                   const std::function<void(const PowerCut::Choice&)>& visit);

}  // namespace crash
