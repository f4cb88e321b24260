#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <numeric>

#include "codec/MessageParcel.h"
#include "tests/codec/PayloadBytes.h"

namespace codec_tests {
namespace {

using KT::MessageParcel;

// Every byte that the parcel says it holds. The sanitizer reports one that is not the parcel's.
Bytes Payload(MessageParcel& parcel) {
  return {parcel.GetBuffer(), parcel.GetBuffer() + std::max(parcel.GetDataSize(), 0)};
}

TEST(MessageParcel, WritesStringsAndIntegersOneAfterTheOther) {
  MessageParcel parcel(1024, nullptr, true);
  parcel.WriteString("abc");
  parcel.WriteString("défg");
  parcel.WriteInt32(0x01020304);
  EXPECT_EQ(parcel.GetDataSize(), 16);
  EXPECT_EQ(Payload(parcel), Hex("0300 616263 0500 64C3A96667 04030201"));
  parcel.WriteInt64(-2);
  EXPECT_EQ(parcel.GetDataSize(), 24);
}

TEST(MessageParcel, ReadsThemBack) {
  Bytes payload = Hex("0300 616263 04030201 FEFFFFFFFFFFFFFF 0000");
  MessageParcel parcel(static_cast<std::uint32_t>(payload.size()), payload.data(), false);
  EXPECT_EQ(parcel.ReadString(), "abc");
  EXPECT_EQ(parcel.ReadInt32(), 0x01020304);
  EXPECT_EQ(parcel.ReadInt64(), -2);
  EXPECT_EQ(parcel.ReadString(), "");
  EXPECT_EQ(parcel.GetDataSize(), 0) << "reads record nothing";
}

TEST(MessageParcel, PastTheEndIntegersReadAsZeroAndStringsAsEmpty) {
  Bytes payload = Hex("01");
  MessageParcel parcel(1, payload.data(), false);
  EXPECT_EQ(parcel.ReadInt32(), 0);
  EXPECT_EQ(parcel.ReadInt64(), 0);
  EXPECT_EQ(parcel.ReadString(), "");
}

TEST(MessageParcel, AStringThatRunsShortReadsWithItsLengthFromLeftovers) {
  Bytes payload = Hex("0400 77786979 0300 21");
  MessageParcel parcel(static_cast<std::uint32_t>(payload.size()), payload.data(), false);
  EXPECT_EQ(parcel.ReadString(), "wxiy");
  EXPECT_EQ(parcel.ReadString(), "wxi");
}

TEST(MessageParcel, AnIntegerThatOverrunsMakesTheSizeMinusOne) {
  MessageParcel parcel(14, nullptr, true);
  parcel.WriteInt32(1);
  parcel.WriteInt32(2);
  parcel.WriteInt32(3);
  EXPECT_EQ(parcel.GetDataSize(), 12);
  parcel.WriteInt32(4);
  EXPECT_EQ(parcel.GetDataSize(), -1);
  parcel.WriteString("");
  EXPECT_EQ(parcel.GetDataSize(), -1) << "whatever is written after it";
}

TEST(MessageParcel, ALongIntegerThatOverrunsMakesTheSizeMinusOne) {
  MessageParcel parcel(7, nullptr, true);
  parcel.WriteInt64(1);
  EXPECT_EQ(parcel.GetDataSize(), -1);
}

TEST(MessageParcel, AStringThatOverrunsAddsOne) {
  MessageParcel parcel(14, nullptr, true);
  parcel.WriteInt32(1);
  parcel.WriteInt32(2);
  parcel.WriteInt32(3);
  parcel.WriteString("abc");
  EXPECT_EQ(parcel.GetDataSize(), 13);
  EXPECT_EQ(Payload(parcel), Hex("01000000 02000000 03000000 03")) << "the length fitted, the text did not";
}

TEST(MessageParcel, AnEmptyLastStringThatDidNotFitStillCountsTwo) {
  MessageParcel parcel(4, nullptr, true);
  parcel.WriteInt32(-1);
  parcel.WriteString("");
  EXPECT_EQ(parcel.GetDataSize(), 6);
  EXPECT_EQ(Payload(parcel), Hex("FFFFFFFF 0000")) << "bytes behind the capacity are readable and zero";
}

TEST(MessageParcel, ALastByteThatSlippedInBehindItsLengthPassesTheCapacityByTwo) {
  MessageParcel parcel(5, nullptr, true);
  parcel.WriteInt32(-1);
  parcel.WriteString("a");
  EXPECT_EQ(parcel.GetDataSize(), 7);
  EXPECT_EQ(Payload(parcel), Hex("FFFFFFFF 61 0000"));
}

TEST(MessageParcel, BytesThatWereNotWrittenAreZero) {
  MessageParcel parcel(10240, nullptr, true);
  EXPECT_EQ(Bytes(parcel.GetBuffer(), parcel.GetBuffer() + 10240), Bytes(10240, 0));
}

TEST(MessageParcel, WritingIntoAReadingParcelRecordsTheFailures) {
  Bytes payload = Hex("01020304");
  MessageParcel parcel(4, payload.data(), false);
  parcel.WriteString("a");
  EXPECT_EQ(parcel.GetDataSize(), 1);
  parcel.WriteString("b");
  EXPECT_EQ(parcel.GetDataSize(), 2);
  parcel.WriteInt32(5);
  EXPECT_EQ(parcel.GetDataSize(), -1);
  EXPECT_EQ(payload, Hex("01020304"));
}

TEST(MessageParcel, WritingALongIntegerIntoAReadingParcelRecordsMinusOne) {
  Bytes payload = Hex("0102030405060708");
  MessageParcel parcel(8, payload.data(), false);
  parcel.WriteInt64(5);
  EXPECT_EQ(parcel.GetDataSize(), -1);
}

TEST(MessageParcel, ReadingFromAWritingParcelGivesZeroAndEmpty) {
  MessageParcel parcel(8, nullptr, true);
  parcel.WriteInt32(-1);
  EXPECT_EQ(parcel.ReadInt32(), 0);
  EXPECT_EQ(parcel.ReadInt64(), 0);
  EXPECT_EQ(parcel.ReadString(), "");
}

TEST(MessageParcel, KeepsManyResults) {
  MessageParcel parcel(10240, nullptr, true);
  for (int i = 0; i < 2560; ++i) parcel.WriteInt32(i);
  EXPECT_EQ(parcel.GetDataSize(), 10240);
  parcel.WriteInt32(0);
  EXPECT_EQ(parcel.GetDataSize(), -1);
}

TEST(MessageParcel, IntegersKeepTheirFullRange) {
  MessageParcel out(24, nullptr, true);
  out.WriteInt32(std::numeric_limits<std::int32_t>::min());
  out.WriteInt32(std::numeric_limits<std::int32_t>::max());
  out.WriteInt64(std::numeric_limits<std::int64_t>::min());
  out.WriteInt64(std::numeric_limits<std::int64_t>::max());
  Bytes payload = Payload(out);
  MessageParcel in(24, payload.data(), false);
  EXPECT_EQ(in.ReadInt32(), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(in.ReadInt32(), std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(in.ReadInt64(), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(in.ReadInt64(), std::numeric_limits<std::int64_t>::max());
}

}  // namespace
}  // namespace codec_tests
