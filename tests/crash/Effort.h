// How many states the crash tests look at.
#pragma once

#include <cstddef>

#include "tests/crash/Choices.h"

namespace crash {

struct EffortOfAll {
  Effort ofSave;
  Effort ofRepair;
  std::size_t statesByRepair;  // of that many states one has its repair cut short as well
};

// The short form, or the long one after --all on the command line.
EffortOfAll ChosenEffort();

}  // namespace crash
