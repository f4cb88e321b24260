#include <gtest/gtest.h>

#include "tests/codec/StreamOver.h"
#include "tests/support/AllocationFaults.h"
#include "tests/support/LogCapture.h"

namespace codec_tests {
namespace {

using cohesa::DataStream;
using cohesa::kFailed;
using Strings = std::vector<std::string>;

TEST(DataStreamArray, IsItsCountThenTheStrings) {
  Writing out(13);
  EXPECT_EQ(out.stream.WriteUtf8StringArray({"ab", "", "c"}), 13U);
  EXPECT_EQ(out.bytes, Hex("03000000 0200 6162 0000 0100 63"));
}

// An empty string adds nothing when it is read, although it adds 2 when it is written.
TEST(DataStreamArray, ReadsBackAndCountsEmptyStringsAsNothing) {
  Reading in(Hex("03000000 0200 6162 0000 0100 63"));
  Strings texts;
  EXPECT_EQ(in.stream.ReadUtf8StringArray(texts), 4U + 4U + 0U + 3U);
  EXPECT_EQ(texts, (Strings{"ab", "", "c"}));
}

TEST(DataStreamArray, AppendsToWhatIsThere) {
  Reading in(Hex("01000000 0100 62"));
  Strings texts{"a"};
  EXPECT_EQ(in.stream.ReadUtf8StringArray(texts), 7U);
  EXPECT_EQ(texts, (Strings{"a", "b"}));
}

TEST(DataStreamArray, OfNoneOrANegativeCountIsFourBytes) {
  for (const char* count : {"00000000", "FFFFFFFF", "00000080"}) {
    Reading in(Joined({Hex(count), Hex("0100 61")}));
    Strings texts{"a"};
    EXPECT_EQ(in.stream.ReadUtf8StringArray(texts), 4U) << count;
    EXPECT_EQ(texts, Strings{"a"});
    EXPECT_EQ(in.Rest(), Hex("0100 61"));
  }
}

TEST(DataStreamArray, WithoutACountFails) {
  Reading in(Hex("010000"));
  Strings texts;
  EXPECT_EQ(in.stream.ReadUtf8StringArray(texts), kFailed);
  EXPECT_EQ(texts, Strings{});
  DataStream unconnected(nullptr);
  EXPECT_EQ(unconnected.ReadUtf8StringArray(texts), kFailed);
  EXPECT_EQ(texts, Strings{});
}

TEST(DataStreamArray, Of25000IsRead) {
  Writing out(4 + 25000 * 3);
  EXPECT_EQ(out.stream.WriteUtf8StringArray(Strings(25000, "x")), 75004U);
  Reading in(out.bytes);
  Strings texts;
  const support::LogCapture log;
  EXPECT_EQ(in.stream.ReadUtf8StringArray(texts), 75004U);
  EXPECT_EQ(texts, Strings(25000, "x"));
  EXPECT_TRUE(log.Lines().empty());
}

TEST(DataStreamArray, Of25001IsLoggedAndReturnedUnread) {
  Reading in(Hex("A9610000 0100 61"));
  Strings texts{"a"};
  const support::LogCapture log;
  EXPECT_EQ(in.stream.ReadUtf8StringArray(texts), 25001U);
  EXPECT_EQ(texts, Strings{"a"});
  EXPECT_EQ(in.Rest(), Hex("0100 61"));
  EXPECT_EQ(log.Lines(),
            (std::vector<std::string>{"4 readPrimitiveTypes int32_t :25001(cohesa::DataStream::ReadUtf8StringArray)"}));
}

TEST(DataStreamArray, OfTheLargestCountIsReturnedAsItIs) {
  Reading in(Hex("FFFFFF7F"));
  Strings texts;
  EXPECT_EQ(in.stream.ReadUtf8StringArray(texts), 0x7FFFFFFFU);
}

TEST(DataStreamArray, ThatRunsShortFillsUpWithLeftoversAndEmptyStrings) {
  Reading in(Hex("04000000 0200 6162 0200 63"));
  Strings texts;
  EXPECT_EQ(in.stream.ReadUtf8StringArray(texts), 4U + 4U + 1U + 0U + 0U);
  EXPECT_EQ(texts, (Strings{"ab", "ab", "", ""}));
  EXPECT_EQ(in.Rest(), Text("c"));
}

TEST(DataStreamArray, WithoutScratchStopsAtTheFirstStringWithBytes) {
  Reading in(Hex("03000000 0000 0200 6162 0000"));
  const support::AllocationFault noScratch(1);
  DataStream stream(&in.channel);
  Strings texts;
  EXPECT_EQ(stream.ReadUtf8StringArray(texts), 4U);
  EXPECT_EQ(texts, Strings{""});
  EXPECT_EQ(in.Rest(), Hex("6162 0000"));
}

TEST(DataStreamArray, ThatDoesNotFitGoesOnWithTheNextString) {
  Writing out(9);
  EXPECT_EQ(out.stream.WriteUtf8StringArray({"abcd", "e"}), 4U + 1U + 3U);
  EXPECT_EQ(out.bytes, Hex("02000000 0400 0100 65"));
}

TEST(DataStreamArray, OnAReadingChannelAddsOneForEachStringToTheFailedCount) {
  Reading in(Hex("00"));
  EXPECT_EQ(in.stream.WriteUtf8StringArray({"a", "b"}), 1U);
}

TEST(DataStreamArray, OfNoStringsWritesTheCount) {
  Writing out(4);
  EXPECT_EQ(out.stream.WriteUtf8StringArray({}), 4U);
  EXPECT_EQ(out.bytes, Hex("00000000"));
}

TEST(DataStreamArray, OverANullBufferCountsAsWritten) {
  cohesa::IpcBufferBuild channel(nullptr, 0, false);
  DataStream stream(&channel);
  EXPECT_EQ(stream.WriteUtf8StringArray({"ab", ""}), 10U);
}

TEST(DataStreamArray, SwappingReversesCountAndLengths) {
  Writing out(8);
  out.stream.SetSwapBytes(true);
  out.stream.WriteUtf8StringArray({"ab"});
  EXPECT_EQ(out.bytes, Hex("00000001 0002 6162"));
  Reading in(out.bytes);
  in.stream.SetSwapBytes(true);
  Strings texts;
  EXPECT_EQ(in.stream.ReadUtf8StringArray(texts), 8U);
  EXPECT_EQ(texts, Strings{"ab"});
}

}  // namespace
}  // namespace codec_tests
