// What a child tells of itself for the tests of ProcessHardening.h.
#pragma once

#include <string>

namespace testing_support {

// Hardens the process and prints, a line each, what that has changed. `folder` is an empty folder of the test's.
void PrintHardening(const std::string& folder);

}  // namespace testing_support
