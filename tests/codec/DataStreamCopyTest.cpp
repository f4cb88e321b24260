#include <gtest/gtest.h>

#include "tests/codec/StreamOver.h"

namespace codec_tests {
namespace {

using cohesa::DataStream;

TEST(DataStreamCopy, SharesTheChannelAndItsCursor) {
  Reading in(Hex("01 02 03"));
  DataStream copy(in.stream);
  EXPECT_EQ(in.stream.ReadInt8(), 1);
  EXPECT_EQ(copy.ReadInt8(), 2);
  EXPECT_EQ(in.stream.ReadInt8(), 3);
}

TEST(DataStreamCopy, TakesOverSwapping) {
  Reading in(Hex("0001 0002"));
  in.stream.SetSwapBytes(true);
  DataStream copy(in.stream);
  EXPECT_EQ(copy.ReadInt16(), 1);
  DataStream assigned(nullptr);
  assigned = in.stream;
  EXPECT_EQ(assigned.ReadInt16(), 2);
}

TEST(DataStreamCopy, StartsWithAnEmptyScratchBuffer) {
  Reading in(Hex("0300 616263 0300 01"));
  EXPECT_EQ(in.stream.ReadUtf8String(), "abc");
  DataStream copy(in.stream);
  EXPECT_EQ(copy.ReadUtf8String(), std::string(3, '\0'));
}

TEST(DataStreamCopy, AssignmentEmptiesTheScratchBuffer) {
  Reading other(Hex("0300 01"));
  Reading in(Hex("0300 616263"));
  EXPECT_EQ(in.stream.ReadUtf8String(), "abc");
  in.stream = other.stream;
  EXPECT_EQ(in.stream.ReadUtf8String(), std::string(3, '\0'));
}

TEST(DataStreamCopy, AssignmentToItselfChangesNothing) {
  Reading in(Hex("0300 616263 0300 01"));
  EXPECT_EQ(in.stream.ReadUtf8String(), "abc");
  const DataStream& same = in.stream;
  in.stream = same;
  EXPECT_EQ(in.stream.ReadUtf8String(), "abc") << "the scratch buffer is a new one";
}

}  // namespace
}  // namespace codec_tests
