#include "client/CallStatus.h"

#include <gtest/gtest.h>

namespace {

TEST(DescribeIpcStatus, NamesEachStatusByItsNumber) {
  for (int status = 1; status <= 6; ++status) {
    EXPECT_NE(KT::Describe(static_cast<IpcStatus>(status)).find("(status " + std::to_string(status) + ")"),
              std::string::npos);
  }
}

TEST(DescribeIpcStatus, NamesAStatusThatItDoesNotKnow) {
  EXPECT_EQ(KT::Describe(static_cast<IpcStatus>(99)), "unknown status 99");
}

}  // namespace
