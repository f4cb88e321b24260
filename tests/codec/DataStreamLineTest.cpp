#include <gtest/gtest.h>

#include "tests/codec/StreamOver.h"

namespace codec_tests {
namespace {

using cohesa::DataStream;

TEST(DataStreamLine, EndsAtTheNewlineAndLeavesTheCursorBehindIt) {
  Reading in(Text("ab\ncd"));
  std::string line = "before";
  EXPECT_EQ(in.stream.ReadLine(line), 2U);
  EXPECT_EQ(line, "ab");
  EXPECT_EQ(in.Rest(), Text("cd"));
}

TEST(DataStreamLine, EndsAtTheEndOfTheBytes) {
  Reading in(Text("cd"));
  std::string line;
  EXPECT_EQ(in.stream.ReadLine(line), 2U);
  EXPECT_EQ(line, "cd");
  EXPECT_EQ(in.stream.ReadLine(line), 0U);
  EXPECT_EQ(line, "");
}

TEST(DataStreamLine, KeepsZerosAndReturns) {
  Reading in(Hex("00 0D 0A"));
  std::string line;
  EXPECT_EQ(in.stream.ReadLine(line), 2U);
  EXPECT_EQ(line, std::string("\0\r", 2));
}

TEST(DataStreamLine, CanBeEmpty) {
  Reading in(Text("\n\n"));
  std::string line = "before";
  EXPECT_EQ(in.stream.ReadLine(line), 0U);
  EXPECT_EQ(line, "");
  EXPECT_EQ(in.Rest(), Text("\n"));
}

TEST(DataStreamLine, IsWrittenWithItsNewline) {
  Writing out(3);
  EXPECT_EQ(out.stream.WriteLine("ab"), 3U);
  EXPECT_EQ(out.bytes, Text("ab\n"));
}

TEST(DataStreamLine, ReportsItsSizePlusOneWhateverFitted) {
  Writing noRoomForNewline(2);
  EXPECT_EQ(noRoomForNewline.stream.WriteLine("ab"), 3U);
  EXPECT_EQ(noRoomForNewline.bytes, Text("ab"));
  Writing roomForNewlineOnly(1);
  EXPECT_EQ(roomForNewlineOnly.stream.WriteLine("ab"), 3U);
  EXPECT_EQ(roomForNewlineOnly.bytes, Text("\n"));
  Reading in(Text("x"));
  EXPECT_EQ(in.stream.WriteLine("ab"), 3U);
  EXPECT_EQ(in.bytes, Text("x"));
  DataStream unconnected(nullptr);
  EXPECT_EQ(unconnected.WriteLine("ab"), 3U);
}

TEST(DataStreamLine, IsEmptyWithoutAChannelAndOnAWritingOne) {
  std::string line = "before";
  DataStream unconnected(nullptr);
  EXPECT_EQ(unconnected.ReadLine(line), 0U);
  EXPECT_EQ(line, "");
  Writing out(2);
  line = "before";
  EXPECT_EQ(out.stream.ReadLine(line), 0U);
  EXPECT_EQ(line, "");
}

// Such a channel gives bytes for ever, and never a newline.
TEST(DataStreamLine, IsEmptyOverANullBuffer) {
  cohesa::IpcBufferBuild channel(nullptr, 0, true);
  DataStream stream(&channel);
  std::string line = "before";
  EXPECT_EQ(stream.ReadLine(line), 0U);
  EXPECT_EQ(line, "");
}

}  // namespace
}  // namespace codec_tests
