#include <gtest/gtest.h>

#include <filesystem>

#include "tests/platform/program/ChildProgram.h"

namespace platform {
namespace {

class ProcessHardeningPosix : public testing::Test {
 protected:
  ProcessHardeningPosix() {
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_);
  }
  ~ProcessHardeningPosix() override { std::filesystem::remove_all(folder_); }

  // What a child prints that has hardened itself (PrintHardeningPosix.cpp).
  std::string Printed() const {
    const auto child = testing_support::RunChild({"harden", folder_.string()});
    EXPECT_EQ(child.status, 0) << child.errors;
    return child.output;
  }

  const std::filesystem::path folder_ = std::filesystem::temp_directory_path() / "marnock-hardening-test";
};

TEST_F(ProcessHardeningPosix, GivesUpNewPrivilegesAndMakesFilesForTheOwnerAlone) {
  EXPECT_EQ(Printed(),
            "NoNewPrivs:\t1\n"
            "700\n"
            "700\n"
            "600\n"
            "600\n");
}

}  // namespace
}  // namespace platform
