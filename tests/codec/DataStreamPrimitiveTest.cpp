#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

#include "tests/codec/StreamOver.h"

namespace codec_tests {
namespace {

using cohesa::DataStream;
using cohesa::kFailed;

TEST(DataStreamPrimitive, WritesEachWidthInLittleEndianOrder) {
  Writing out(27);
  EXPECT_EQ(out.stream.WriteInt32(0x01020304), 4U);
  EXPECT_EQ(out.stream.WriteInt16(-2), 2U);
  EXPECT_EQ(out.stream.WriteFloat(1.0F), 4U);
  EXPECT_EQ(out.stream.WriteDouble(-2.0), 8U);
  EXPECT_EQ(out.stream.WriteInt8(0xAB), 1U);
  EXPECT_EQ(out.stream.WriteInt64(0x0102030405060708), 8U);
  EXPECT_EQ(out.bytes, Hex("04030201 FEFF 0000803F 00000000000000C0 AB 0807060504030201"));
}

TEST(DataStreamPrimitive, ReadsEachWidthByReference) {
  Reading in(Hex("04030201 FEFF 0000803F 00000000000000C0 AB 0807060504030201"));
  std::int32_t int32 = 0;
  std::int16_t int16 = 0;
  float single = 0;
  double number = 0;
  std::uint8_t int8 = 0;
  std::int64_t int64 = 0;
  EXPECT_EQ(in.stream.ReadInt32(int32), 4U);
  EXPECT_EQ(in.stream.ReadInt16(int16), 2U);
  EXPECT_EQ(in.stream.ReadFloat(single), 4U);
  EXPECT_EQ(in.stream.ReadDouble(number), 8U);
  EXPECT_EQ(in.stream.ReadInt8(int8), 1U);
  EXPECT_EQ(in.stream.ReadInt64(int64), 8U);
  EXPECT_EQ(int32, 0x01020304);
  EXPECT_EQ(int16, -2);
  EXPECT_EQ(single, 1.0F);
  EXPECT_EQ(number, -2.0);
  EXPECT_EQ(int8, 0xAB);
  EXPECT_EQ(int64, 0x0102030405060708);
}

TEST(DataStreamPrimitive, ReadsEachWidthByValue) {
  Reading in(Hex("04030201 FEFF 0000803F 00000000000000C0 AB 0807060504030201"));
  EXPECT_EQ(in.stream.ReadInt32(), 0x01020304);
  EXPECT_EQ(in.stream.ReadInt16(), -2);
  EXPECT_EQ(in.stream.ReadFloat(), 1.0F);
  EXPECT_EQ(in.stream.ReadDouble(), -2.0);
  EXPECT_EQ(in.stream.ReadInt8(), 0xAB);
  EXPECT_EQ(in.stream.ReadInt64(), 0x0102030405060708);
}

TEST(DataStreamPrimitive, WithoutAChannelValuesAreTheDefaults) {
  DataStream stream(nullptr);
  EXPECT_EQ(stream.ReadInt32(), -1);
  EXPECT_EQ(static_cast<std::uint16_t>(stream.ReadInt16()), 0xFFFF);
  EXPECT_EQ(stream.ReadFloat(), 0.0F);
  EXPECT_EQ(stream.ReadDouble(), -1.0);
  EXPECT_EQ(stream.ReadInt8(), 0);
  EXPECT_EQ(stream.ReadInt64(), -1);
}

TEST(DataStreamPrimitive, WithoutAChannelReferencesStayUntouched) {
  DataStream stream(nullptr);
  std::int32_t int32 = 7;
  std::int16_t int16 = 7;
  float single = 7;
  double number = 7;
  std::uint8_t int8 = 7;
  std::int64_t int64 = 7;
  EXPECT_EQ(stream.ReadInt32(int32), kFailed);
  EXPECT_EQ(stream.ReadInt16(int16), kFailed);
  EXPECT_EQ(stream.ReadFloat(single), kFailed);
  EXPECT_EQ(stream.ReadDouble(number), kFailed);
  EXPECT_EQ(stream.ReadInt8(int8), kFailed);
  EXPECT_EQ(stream.ReadInt64(int64), kFailed);
  EXPECT_EQ(int32, 7);
  EXPECT_EQ(int16, 7);
  EXPECT_EQ(single, 7);
  EXPECT_EQ(number, 7);
  EXPECT_EQ(int8, 7);
  EXPECT_EQ(int64, 7);
}

TEST(DataStreamPrimitive, WithoutAChannelWritesFail) {
  DataStream stream(nullptr);
  EXPECT_EQ(stream.WriteInt32(1), kFailed);
  EXPECT_EQ(stream.WriteInt16(1), kFailed);
  EXPECT_EQ(stream.WriteFloat(1), kFailed);
  EXPECT_EQ(stream.WriteDouble(1), kFailed);
  EXPECT_EQ(stream.WriteInt8(1), kFailed);
  EXPECT_EQ(stream.WriteInt64(1), kFailed);
  EXPECT_EQ(stream.Write("a", 1), kFailed);
  std::uint8_t byte = 7;
  EXPECT_EQ(stream.Read(&byte, 1), kFailed);
  EXPECT_EQ(byte, 7);
}

TEST(DataStreamPrimitive, PastTheEndReferencesBecomeZero) {
  Reading in(Hex("01"));
  std::int32_t int32 = 7;
  std::int16_t int16 = 7;
  float single = 7;
  double number = 7;
  std::int64_t int64 = 7;
  EXPECT_EQ(in.stream.ReadInt32(int32), kFailed);
  EXPECT_EQ(in.stream.ReadInt16(int16), kFailed);
  EXPECT_EQ(in.stream.ReadFloat(single), kFailed);
  EXPECT_EQ(in.stream.ReadDouble(number), kFailed);
  EXPECT_EQ(in.stream.ReadInt64(int64), kFailed);
  EXPECT_EQ(int32, 0);
  EXPECT_EQ(int16, 0);
  EXPECT_EQ(single, 0);
  EXPECT_EQ(number, 0);
  EXPECT_EQ(int64, 0);
  EXPECT_EQ(in.Rest(), Hex("01")) << "a failed read moved the cursor";

  std::uint8_t int8 = 7;
  EXPECT_EQ(in.stream.ReadInt8(int8), kFailed);
  EXPECT_EQ(int8, 0);
}

TEST(DataStreamPrimitive, PastTheEndValuesAreZeroAndNotTheDefaults) {
  Reading in(Hex("FF"));
  ASSERT_EQ(in.stream.ReadInt8(), 0xFF);
  EXPECT_EQ(in.stream.ReadInt32(), 0);
  EXPECT_EQ(in.stream.ReadInt16(), 0);
  EXPECT_EQ(in.stream.ReadFloat(), 0.0F);
  EXPECT_EQ(in.stream.ReadDouble(), 0.0);
  EXPECT_EQ(in.stream.ReadInt8(), 0);
  EXPECT_EQ(in.stream.ReadInt64(), 0);
}

TEST(DataStreamPrimitive, AValueThatEndsAtTheBuffersEndFits) {
  Reading in(Hex("0100000000000080"));
  EXPECT_EQ(in.stream.ReadInt64(), std::numeric_limits<std::int64_t>::min() + 1);
  Writing out(4);
  EXPECT_EQ(out.stream.WriteInt32(-1), 4U);
  EXPECT_EQ(out.bytes, Hex("FFFFFFFF"));
}

TEST(DataStreamPrimitive, AWriteThatDoesNotFitMovesNothing) {
  Writing out(7);
  EXPECT_EQ(out.stream.WriteInt64(-1), kFailed);
  EXPECT_EQ(out.stream.WriteInt32(-1), 4U);
  EXPECT_EQ(out.stream.WriteInt32(-1), kFailed);
  EXPECT_EQ(out.stream.WriteFloat(-1), kFailed);
  EXPECT_EQ(out.stream.WriteDouble(-1), kFailed);
  EXPECT_EQ(out.stream.WriteInt16(0x1234), 2U);
  EXPECT_EQ(out.stream.WriteInt16(-1), kFailed);
  EXPECT_EQ(out.stream.WriteInt8(0x56), 1U);
  EXPECT_EQ(out.stream.WriteInt8(0xFF), kFailed);
  EXPECT_EQ(out.bytes, Hex("FFFFFFFF 3412 56"));
}

TEST(DataStreamPrimitive, RawWriteOfFiveBytesIntoFourLeavesTheCursor) {
  Writing out(4);
  EXPECT_EQ(out.stream.Write("abcde", 5), kFailed);
  EXPECT_EQ(out.Written(), Bytes{});
}

TEST(DataStreamPrimitive, RawBytesGoStraightThrough) {
  Writing out(3);
  out.stream.SetSwapBytes(true);
  EXPECT_EQ(out.stream.Write("abc", 3), 3U);
  Reading in(out.bytes);
  in.stream.SetSwapBytes(true);
  std::array<std::uint8_t, 3> bytes{};
  EXPECT_EQ(in.stream.Read(bytes.data(), 3), 3U);
  EXPECT_EQ(bytes, (std::array<std::uint8_t, 3>{'a', 'b', 'c'}));
}

TEST(DataStreamPrimitive, TheWrongDirectionFailsAndReadsZero) {
  Reading in(Hex("01020304"));
  EXPECT_EQ(in.stream.WriteInt32(-1), kFailed);
  EXPECT_EQ(in.bytes, Hex("01020304"));
  Writing out(4);
  out.bytes[0] = 1;
  std::int32_t value = 7;
  EXPECT_EQ(out.stream.ReadInt32(value), kFailed);
  EXPECT_EQ(value, 0);
}

TEST(DataStreamPrimitive, OverANullBufferReadsCountAndYieldZero) {
  cohesa::IpcBufferBuild channel(nullptr, 0, true);
  DataStream stream(&channel);
  std::int32_t value = 7;
  EXPECT_EQ(stream.ReadInt32(value), 4U);
  EXPECT_EQ(value, 0);
  EXPECT_EQ(stream.WriteInt64(1), 8U);
}

TEST(DataStreamPrimitive, SwappingReversesEveryWidth) {
  Writing out(27);
  out.stream.SetSwapBytes(true);
  out.stream.WriteInt32(1);
  out.stream.WriteInt16(2);
  out.stream.WriteFloat(1.0F);
  out.stream.WriteDouble(-2.0);
  out.stream.WriteInt8(3);
  out.stream.WriteInt64(4);
  EXPECT_EQ(out.bytes, Hex("00000001 0002 3F800000 C000000000000000 03 0000000000000004"));

  Reading in(out.bytes);
  in.stream.SetSwapBytes(true);
  EXPECT_EQ(in.stream.ReadInt32(), 1);
  EXPECT_EQ(in.stream.ReadInt16(), 2);
  EXPECT_EQ(in.stream.ReadFloat(), 1.0F);
  EXPECT_EQ(in.stream.ReadDouble(), -2.0);
  EXPECT_EQ(in.stream.ReadInt8(), 3);
  EXPECT_EQ(in.stream.ReadInt64(), 4);
}

TEST(DataStreamPrimitive, SwappingIsOffUntilItIsSetAndCanBeTakenBack) {
  Writing out(4);
  EXPECT_FALSE(out.stream.IsSwapBytes());
  out.stream.SetSwapBytes(true);
  EXPECT_TRUE(out.stream.IsSwapBytes());
  out.stream.SetSwapBytes(false);
  EXPECT_FALSE(out.stream.IsSwapBytes());
  out.stream.WriteInt32(1);
  EXPECT_EQ(out.bytes, Hex("01000000"));
}

TEST(DataStreamPrimitive, OddFloatsKeepTheirBits) {
  Writing out(12);
  out.stream.WriteFloat(std::numeric_limits<float>::infinity());
  out.stream.WriteDouble(-0.0);
  EXPECT_EQ(out.bytes, Hex("0000807F 0000000000000080"));
  Reading in(Hex("0100C07F"));
  EXPECT_TRUE(std::isnan(in.stream.ReadFloat()));
}

TEST(DataStreamPrimitive, FlushDoesNothing) {
  Writing out(2);
  out.stream.WriteInt8(1);
  out.stream.Flush();
  EXPECT_EQ(out.Written(), Hex("01"));
}

}  // namespace
}  // namespace codec_tests
