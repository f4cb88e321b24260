#include "platform/ipc/FrameReader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "tests/platform/ipc/TestFrame.h"

namespace {

using platform::ipc::FrameReader;
using platform::ipc::FrameResult;
using platform::ipc::FrameState;

// Feeds at most `most` of `bytes` from `at` on, as one read would.
void Feed(FrameReader& reader, const std::string& bytes, std::size_t& at, std::size_t most) {
  const std::span<char> space = reader.Space();
  ASSERT_FALSE(space.empty());
  const std::size_t count = std::min({most, space.size(), bytes.size() - at});
  std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(at), count, space.begin());
  reader.Commit(count);
  at += count;
}

// The payloads of the complete frames that are buffered.
void TakeAll(FrameReader& reader, std::vector<std::string>& payloads) {
  for (FrameResult next = reader.Next(); next.state == FrameState::Complete; next = reader.Next()) {
    payloads.emplace_back(next.frame.payload.begin(), next.frame.payload.end());
    reader.Pop(next.bytes);
  }
}

TEST(FrameReading, FindsFramesThatComeByteByByte) {
  const std::string bytes = TestFrame{.payload = "one"}.Bytes() + TestFrame{.payload = "two"}.Bytes();
  FrameReader reader;
  std::vector<std::string> payloads;
  for (std::size_t at = 0; at < bytes.size();) {
    Feed(reader, bytes, at, 1);
    TakeAll(reader, payloads);
  }
  EXPECT_EQ(payloads, (std::vector<std::string>{"one", "two"}));
  EXPECT_TRUE(reader.Empty());
}

TEST(FrameReading, FindsTwoFramesOfOneRead) {
  const std::string bytes = TestFrame{.payload = "one"}.Bytes() + TestFrame{.payload = "two"}.Bytes();
  FrameReader reader;
  std::size_t at = 0;
  Feed(reader, bytes, at, bytes.size());
  std::vector<std::string> payloads;
  TakeAll(reader, payloads);
  EXPECT_EQ(payloads, (std::vector<std::string>{"one", "two"}));
}

TEST(FrameReading, LeavesAFrameInPlaceUntilItIsPopped) {
  FrameReader reader;
  std::size_t at = 0;
  Feed(reader, TestFrame{.payload = "one"}.Bytes(), at, 100);
  EXPECT_EQ(reader.Next().state, FrameState::Complete);
  EXPECT_EQ(reader.Next().state, FrameState::Complete);
  EXPECT_FALSE(reader.Empty());
}

TEST(FrameReading, GrowsToTheLargestFrameAndNoFurther) {
  const std::string bytes = TestFrame{.payload = std::string(65'505, 'x')}.Bytes();
  FrameReader reader;
  std::size_t at = 0;
  std::vector<std::string> payloads;
  while (at < bytes.size()) {
    Feed(reader, bytes, at, bytes.size());
    TakeAll(reader, payloads);
  }
  ASSERT_EQ(payloads.size(), 1U);
  EXPECT_EQ(payloads[0].size(), 65'505U);
  EXPECT_EQ(reader.Space().size(), 65'540U);
}

TEST(FrameReading, KeepsItsSmallBufferForSmallFrames) {
  FrameReader reader;
  EXPECT_EQ(reader.Space().size(), 16'384U);
}

TEST(FrameReadingProperties, HowTheBytesArriveDoesNotMatter) {
  std::mt19937 random(7);
  for (int round = 0; round < 50; ++round) {
    std::string bytes;
    std::vector<std::string> expected;
    for (int frame = 0; frame < 40; ++frame) {
      const std::size_t size = frame % 10 == 0 ? random() % 65'506 : random() % 600;
      expected.emplace_back(size, static_cast<char>('a' + frame % 26));
      bytes += TestFrame{.payload = expected.back()}.Bytes();
    }
    FrameReader reader;
    std::vector<std::string> payloads;
    for (std::size_t at = 0; at < bytes.size();) {
      Feed(reader, bytes, at, 1 + random() % 20'000);
      TakeAll(reader, payloads);
    }
    ASSERT_EQ(payloads, expected);
  }
}

}  // namespace
