#include "platform/WindowsError.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace platform {
namespace {

TEST(WindowsErrorOf, KnowsTheFileSystemsCommonFailures) {
  EXPECT_EQ(WindowsErrorOf(ENOENT), 2U);
  EXPECT_EQ(WindowsErrorOf(ENOTDIR), 3U);
  EXPECT_EQ(WindowsErrorOf(EACCES), 5U);
  EXPECT_EQ(WindowsErrorOf(EPERM), 5U);
  EXPECT_EQ(WindowsErrorOf(EISDIR), 5U);
  EXPECT_EQ(WindowsErrorOf(EXDEV), 17U);
  EXPECT_EQ(WindowsErrorOf(ENOSPC), 112U);
  EXPECT_EQ(WindowsErrorOf(EEXIST), 183U);
  EXPECT_EQ(WindowsErrorOf(ENAMETOOLONG), 206U);
}

TEST(WindowsErrorOf, CallsTheRestAGeneralFailure) {
  EXPECT_EQ(WindowsErrorOf(ECHILD), 31U);
  EXPECT_EQ(WindowsErrorOf(0), 31U);
  EXPECT_EQ(WindowsErrorOf(-1), 31U);
}

}  // namespace
}  // namespace platform
