// Runs the program that plays the child in these tests (ChildMain.cpp).
#pragma once

#include <string>
#include <vector>

namespace testing_support {

struct ChildOutcome {
  int status = -1;  // the exit status; -1 when a signal ended it
  std::string output;
  std::string errors;
};

// Runs it to its end with those arguments (UTF-8) and that standard input. It has a process group (POSIX) or
// console (Windows) of its own, so that what it sends to itself does not reach the test.
ChildOutcome RunChild(const std::vector<std::string>& arguments, const std::string& input = "");

}  // namespace testing_support
