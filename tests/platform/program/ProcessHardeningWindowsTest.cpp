#include <gtest/gtest.h>

#include <filesystem>

#include "tests/platform/program/ChildProgram.h"

namespace platform {
namespace {

class ProcessHardeningWindows : public testing::Test {
 protected:
  ProcessHardeningWindows() {
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_);
  }
  ~ProcessHardeningWindows() override { std::filesystem::remove_all(folder_); }

  // What a child prints that has hardened itself (PrintHardeningWindows.cpp).
  std::string Printed() const {
    const auto child = testing_support::RunChild({"harden", folder_.string()});
    EXPECT_EQ(child.status, 0) << child.errors;
    return child.output;
  }

  const std::filesystem::path folder_ = std::filesystem::temp_directory_path() / "marnock-hardening-test";
};

TEST_F(ProcessHardeningWindows, FindsNoDllInTheCurrentDirectoryAndPassesNoHandleOn) {
  EXPECT_EQ(Printed(),
            "loaded\n"
            "refused\n"
            "inheritable streams and files: 0\n"
            "inheritable stream: 0\n"
            "inheritable stream: 0\n"
            "inheritable stream: 0\n");
}

}  // namespace
}  // namespace platform
