#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "codec/IpcBufferBuild.h"

namespace {

using cohesa::IpcBufferBuild;
using cohesa::kFailed;

class Channel : public testing::Test {
 protected:
  std::vector<std::uint8_t> buffer_{1, 2, 3, 4};
  std::vector<std::uint8_t> memory_{9, 9, 9, 9};
  const std::vector<std::uint8_t> untouched_{9, 9, 9, 9};
};

TEST_F(Channel, ReadsFrontToBack) {
  IpcBufferBuild channel(buffer_.data(), 4, true);
  EXPECT_EQ(channel.Read(memory_.data(), 1), 1U);
  EXPECT_EQ(channel.Read(memory_.data() + 1, 3), 3U);
  EXPECT_EQ(memory_, buffer_);
}

TEST_F(Channel, WritesFrontToBack) {
  IpcBufferBuild channel(buffer_.data(), 4, false);
  EXPECT_EQ(channel.Write("ab", 2), 2U);
  EXPECT_EQ(channel.Write("c", 1), 1U);
  EXPECT_EQ(buffer_, (std::vector<std::uint8_t>{'a', 'b', 'c', 4}));
}

TEST_F(Channel, AReadPastTheEndMovesNothing) {
  IpcBufferBuild channel(buffer_.data(), 4, true);
  ASSERT_EQ(channel.Read(memory_.data(), 2), 2U);
  memory_ = untouched_;
  EXPECT_EQ(channel.Read(memory_.data(), 3), kFailed);
  EXPECT_EQ(memory_, untouched_);
  EXPECT_EQ(channel.Read(memory_.data(), 2), 2U);
  EXPECT_EQ(memory_[0], 3);
}

TEST_F(Channel, AWritePastTheEndMovesNothing) {
  IpcBufferBuild channel(buffer_.data(), 4, false);
  EXPECT_EQ(channel.Write("abcde", 5), kFailed);
  EXPECT_EQ(buffer_, (std::vector<std::uint8_t>{1, 2, 3, 4}));
  EXPECT_EQ(channel.Write("wxyz", 4), 4U);
  EXPECT_EQ(buffer_, (std::vector<std::uint8_t>{'w', 'x', 'y', 'z'}));
}

TEST_F(Channel, TheLargestCountIsPastTheEndToo) {
  IpcBufferBuild reading(buffer_.data(), 4, true);
  ASSERT_EQ(reading.Read(memory_.data(), 1), 1U);
  EXPECT_EQ(reading.Read(memory_.data(), 0xFFFFFFFF), kFailed);
  IpcBufferBuild writing(buffer_.data(), 4, false);
  ASSERT_EQ(writing.Write("a", 1), 1U);
  EXPECT_EQ(writing.Write(memory_.data(), 0xFFFFFFFF), kFailed);
}

TEST_F(Channel, NothingCanBeReadOrWrittenAtTheEndWithoutFailing) {
  IpcBufferBuild channel(buffer_.data(), 4, true);
  ASSERT_EQ(channel.Read(memory_.data(), 4), 4U);
  EXPECT_EQ(channel.Read(memory_.data(), 0), 0U);
  EXPECT_EQ(channel.Read(memory_.data(), 1), kFailed);
}

TEST_F(Channel, AReadingChannelCannotBeWritten) {
  IpcBufferBuild channel(buffer_.data(), 4, true);
  EXPECT_EQ(channel.Write("a", 1), kFailed);
  EXPECT_EQ(buffer_[0], 1);
  EXPECT_EQ(channel.Read(memory_.data(), 4), 4U) << "the cursor moved";
}

TEST_F(Channel, AWritingChannelCannotBeRead) {
  IpcBufferBuild channel(buffer_.data(), 4, false);
  EXPECT_EQ(channel.Read(memory_.data(), 1), kFailed);
  EXPECT_EQ(memory_, untouched_);
  EXPECT_EQ(channel.Write("abcd", 4), 4U) << "the cursor moved";
}

TEST_F(Channel, NullMemoryCountsAsDoneInEitherModeAndPastTheEnd) {
  IpcBufferBuild reading(buffer_.data(), 4, true);
  EXPECT_EQ(reading.Read(nullptr, 5), 5U);
  EXPECT_EQ(reading.Write(nullptr, 5), 5U);
  EXPECT_EQ(reading.Read(memory_.data(), 4), 4U) << "the cursor moved";
}

TEST_F(Channel, OverANullBufferEverythingCountsAsDone) {
  IpcBufferBuild reading(nullptr, 4, true);
  EXPECT_EQ(reading.Read(memory_.data(), 3), 3U);
  EXPECT_EQ(reading.Write("abc", 3), 3U);
  EXPECT_EQ(memory_, untouched_);
  EXPECT_FALSE(reading.HasBuffer());
}

}  // namespace
