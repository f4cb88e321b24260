#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

#include "platform/logging/QxLogger.h"
#include "tests/crash/Effort.h"

namespace {

bool isAll = false;

}  // namespace

crash::EffortOfAll crash::ChosenEffort() {
  constexpr EffortOfAll kShort{.ofSave = {256, 128}, .ofRepair = {64, 8}, .statesByRepair = 8};
  constexpr EffortOfAll kLong{.ofSave = {4096, 512}, .ofRepair = {256, 32}, .statesByRepair = 4};
  return isAll ? kLong : kShort;
}

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  isAll =
      std::any_of(argv + 1, argv + argc, [](const char* argument) { return std::string_view(argument) == "--all"; });
  QxLogger::GetInstance().SetObserver([](QxLogLevel, const std::wstring&) {});  // thousands of lines that nobody reads
  return RUN_ALL_TESTS();
}
