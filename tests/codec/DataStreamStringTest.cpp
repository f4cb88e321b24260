#include <gtest/gtest.h>

#include "tests/codec/StreamOver.h"
#include "tests/support/AllocationFaults.h"

namespace codec_tests {
namespace {

using cohesa::DataStream;
using cohesa::kFailed;

TEST(DataStreamString, IsItsLengthThenItsBytes) {
  Writing out(5);
  EXPECT_EQ(out.stream.WriteUtf8String("abc"), 5U);
  EXPECT_EQ(out.bytes, Hex("0300 616263"));
  Reading in(out.bytes);
  std::string text = "before";
  EXPECT_EQ(in.stream.ReadUtf8String(text), 5U);
  EXPECT_EQ(text, "abc");
}

TEST(DataStreamString, AnEmptyOneIsTwoZeroBytesAndReadsWithResultZero) {
  Writing out(2);
  EXPECT_EQ(out.stream.WriteUtf8String(""), 2U);
  EXPECT_EQ(out.bytes, Hex("0000"));
  Reading in(out.bytes);
  std::string text = "before";
  EXPECT_EQ(in.stream.ReadUtf8String(text), 0U);
  EXPECT_EQ(text, "");
  EXPECT_EQ(in.Rest(), Bytes{});
}

TEST(DataStreamString, CountsBytesNotCharacters) {
  Writing out(8);
  EXPECT_EQ(out.stream.WriteUtf8String("手机"), 8U);
  EXPECT_EQ(out.bytes, Hex("0600 E6898B E69CBA"));
}

TEST(DataStreamString, KeepsZeroAndIllFormedBytes) {
  const std::string odd("\0\xFF\xC3", 3);
  Writing out(5);
  out.stream.WriteUtf8String(odd);
  Reading in(out.bytes);
  EXPECT_EQ(in.stream.ReadUtf8String(), odd);
}

TEST(DataStreamString, ANegativeLengthReadsEmptyAndStaysAfterThePrefix) {
  for (const char* prefix : {"0080", "FFFF", "0180"}) {
    Reading in(Joined({Hex(prefix), Text("abc")}));
    std::string text = "before";
    EXPECT_EQ(in.stream.ReadUtf8String(text), 0U) << prefix;
    EXPECT_EQ(text, "");
    EXPECT_EQ(in.Rest(), Text("abc"));
  }
}

TEST(DataStreamString, AMissingLengthReadsEmpty) {
  Reading in(Hex("01"));
  std::string text = "before";
  EXPECT_EQ(in.stream.ReadUtf8String(text), 0U);
  EXPECT_EQ(text, "");
  EXPECT_EQ(in.Rest(), Hex("01"));
}

TEST(DataStreamString, WithoutAChannelReadsEmptyWithResultZero) {
  DataStream stream(nullptr);
  std::string text = "before";
  EXPECT_EQ(stream.ReadUtf8String(text), 0U);
  EXPECT_EQ(text, "");
  EXPECT_EQ(stream.ReadUtf8String(), "");
}

TEST(DataStreamString, WithoutAChannelWritesLikeBytesThatDoNotFit) {
  DataStream stream(nullptr);
  EXPECT_EQ(stream.WriteUtf8String("abc"), 1U);
}

// What earlier reads left in the scratch buffer shows where the bytes run short.
TEST(DataStreamString, BytesThatRunShortReadAsZerosAtFirst) {
  Reading in(Hex("0300 6162"));
  std::string text;
  EXPECT_EQ(in.stream.ReadUtf8String(text), 1U);
  EXPECT_EQ(text, std::string(3, '\0'));
  EXPECT_EQ(in.Rest(), Text("ab")) << "the bytes were taken";
}

TEST(DataStreamString, BytesThatRunShortReadAsLeftoversOfAnEarlierRead) {
  Reading in(Hex("0500 68656C6C6F 0300 21"));
  EXPECT_EQ(in.stream.ReadUtf8String(), "hello");
  EXPECT_EQ(in.stream.ReadUtf8String(), "hel");
}

TEST(DataStreamString, LeftoversEndWhereTheLastReadEnded) {
  Reading in(Hex("0500 68656C6C6F 0200 7879 0600 21"));
  EXPECT_EQ(in.stream.ReadUtf8String(), "hello");
  EXPECT_EQ(in.stream.ReadUtf8String(), "xy");
  EXPECT_EQ(in.stream.ReadUtf8String(), std::string("xy\0\0\0\0", 6)) << "shrinking forgets, growing fills with zeros";
}

TEST(DataStreamString, AnEmptyStringLeavesTheLeftovers) {
  Reading in(Hex("0200 7879 0000 0200"));
  EXPECT_EQ(in.stream.ReadUtf8String(), "xy");
  EXPECT_EQ(in.stream.ReadUtf8String(), "");
  EXPECT_EQ(in.stream.ReadUtf8String(), "xy");
}

TEST(DataStreamString, OnAWritingChannelReadsEmpty) {
  Writing out(8);
  out.bytes[0] = 1;
  std::string text = "before";
  EXPECT_EQ(out.stream.ReadUtf8String(text), 0U);
  EXPECT_EQ(text, "");
}

TEST(DataStreamString, BytesThatDoNotFitReturnOneAndLeaveTheLength) {
  Writing out(4);
  EXPECT_EQ(out.stream.WriteUtf8String("abc"), 1U);
  EXPECT_EQ(out.Written(), Hex("0300"));
}

TEST(DataStreamString, ALengthThatDoesNotFitIsNotCounted) {
  Writing full(1);
  EXPECT_EQ(full.stream.WriteUtf8String(""), 2U);
  EXPECT_EQ(full.stream.WriteUtf8String("a"), 3U) << "one byte was left, and the text is one byte";
  EXPECT_EQ(full.bytes, Hex("61"));
  EXPECT_EQ(full.stream.WriteUtf8String(""), 2U);
  EXPECT_EQ(full.stream.WriteUtf8String("b"), 1U);
}

TEST(DataStreamString, OfTheLargestSignedLengthSurvives) {
  const std::string text(32767, 'x');
  Writing out(32769);
  EXPECT_EQ(out.stream.WriteUtf8String(text), 32769U);
  EXPECT_EQ(out.bytes[0], 0xFF);
  EXPECT_EQ(out.bytes[1], 0x7F);
  Reading in(out.bytes);
  std::string back;
  EXPECT_EQ(in.stream.ReadUtf8String(back), 32769U);
  EXPECT_EQ(back, text);
}

TEST(DataStreamString, OneByteLongerReadsEmptyAndLeavesItsBytes) {
  Writing out(32770);
  EXPECT_EQ(out.stream.WriteUtf8String(std::string(32768, 'x')), 32770U);
  Reading in(out.bytes);
  EXPECT_EQ(in.stream.ReadUtf8String(), "");
  EXPECT_EQ(in.Rest().size(), 32768U);
}

TEST(DataStreamString, TheLengthIsCutTo16Bits) {
  Writing out(65540);
  EXPECT_EQ(out.stream.WriteUtf8String(std::string(65537, 'x')), 65539U) << "all bytes are written";
  Reading in(out.bytes);
  EXPECT_EQ(in.stream.ReadUtf8String(), "x");
}

TEST(DataStreamString, SwappingReversesTheLengthOnly) {
  Writing out(5);
  out.stream.SetSwapBytes(true);
  EXPECT_EQ(out.stream.WriteUtf8String("abc"), 5U);
  EXPECT_EQ(out.bytes, Hex("0003 616263"));
  Reading in(out.bytes);
  in.stream.SetSwapBytes(true);
  EXPECT_EQ(in.stream.ReadUtf8String(), "abc");
}

TEST(DataStreamString, OverANullBufferCountsAsWritten) {
  cohesa::IpcBufferBuild channel(nullptr, 0, false);
  DataStream stream(&channel);
  EXPECT_EQ(stream.WriteUtf8String("abc"), 5U);
}

TEST(DataStreamString, WithoutMemoryForTheScratchBlockOnlyEmptyStringsRead) {
  Reading in(Hex("0000 0200 7879"));
  support::AllocationFault noScratch(1);
  DataStream stream(&in.channel);
  ASSERT_TRUE(noScratch.Happened());
  std::string text = "before";
  EXPECT_EQ(stream.ReadUtf8String(text), 0U);
  EXPECT_EQ(stream.ReadUtf8String(text), kFailed);
  EXPECT_EQ(text, "");
  EXPECT_EQ(in.Rest(), Text("xy"));
}

TEST(DataStreamString, WithoutMemoryForTheScratchBlockTheValueFormIsEmpty) {
  Reading in(Hex("0200 7879"));
  support::AllocationFault noScratch(1);
  DataStream stream(&in.channel);
  EXPECT_EQ(stream.ReadUtf8String(), "");
}

}  // namespace
}  // namespace codec_tests
