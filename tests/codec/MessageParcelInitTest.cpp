#include <gtest/gtest.h>

#include <optional>

#include "codec/MessageParcel.h"
#include "tests/codec/PayloadBytes.h"
#include "tests/support/AllocationFaults.h"
#include "tests/support/LogCapture.h"

namespace codec_tests {
namespace {

using KT::MessageParcel;
using Lines = std::vector<std::string>;

const Lines kParameterInvalid{"4 The parameter invalid.(KT::MessageParcel::Init)"};

// Nothing can be written into it or read from it.
void ExpectInert(MessageParcel& parcel) {
  parcel.WriteString("abc");
  parcel.WriteInt32(1);
  parcel.WriteInt64(1);
  EXPECT_EQ(parcel.GetDataSize(), 0);
  EXPECT_EQ(parcel.ReadInt32(), -1);
  EXPECT_EQ(parcel.ReadInt64(), -1);
  EXPECT_EQ(parcel.ReadString(), "");
}

class SizeOutOfRange : public testing::TestWithParam<std::uint32_t> {};

TEST_P(SizeOutOfRange, IsLoggedAndLeavesTheParcelInert) {
  std::uint8_t byte = 5;
  for (const bool allocate : {false, true}) {
    const support::LogCapture log;
    MessageParcel parcel(GetParam(), &byte, allocate);
    EXPECT_EQ(log.Lines(), kParameterInvalid);
    EXPECT_EQ(parcel.GetBuffer(), nullptr);
    ExpectInert(parcel);
  }
  EXPECT_EQ(byte, 5);
}

INSTANTIATE_TEST_SUITE_P(MessageParcelInit, SizeOutOfRange,
                         testing::Values(0U, 0xFFFFFFFFU /* -1 */, 0x80000000U, 10241U, 0x7FFFFFFFU));

class SizeInRange : public testing::TestWithParam<std::uint32_t> {};

TEST_P(SizeInRange, IsTheWritingParcelsCapacity) {
  const support::LogCapture log;
  MessageParcel parcel(GetParam(), nullptr, true);
  EXPECT_TRUE(log.Lines().empty());
  parcel.WriteString(std::string(GetParam() < 2 ? 0 : GetParam() - 2, 'x'));
  EXPECT_EQ(parcel.GetDataSize(), GetParam() < 2 ? 2 : static_cast<int>(GetParam()));
  parcel.WriteInt32(1);
  EXPECT_EQ(parcel.GetDataSize(), -1);
}

TEST_P(SizeInRange, IsWhatAReadingParcelReads) {
  Bytes payload(GetParam(), 0x5A);
  const support::LogCapture log;
  MessageParcel parcel(GetParam(), payload.data(), false);
  EXPECT_TRUE(log.Lines().empty());
  EXPECT_EQ(parcel.GetBuffer(), payload.data());
  EXPECT_EQ(parcel.ReadInt32(), GetParam() < 4 ? 0 : 0x5A5A5A5A);
}

INSTANTIATE_TEST_SUITE_P(MessageParcelInit, SizeInRange, testing::Values(1U, 2U, 10240U));

TEST(MessageParcelInit, WithoutBytesToReadIsLogged) {
  const support::LogCapture log;
  MessageParcel parcel(8, nullptr, false);
  EXPECT_EQ(log.Lines(), (Lines{"4 msgBuffer is nullptr.(KT::MessageParcel::Init)"}));
  EXPECT_EQ(parcel.GetBuffer(), nullptr);
  ExpectInert(parcel);
}

TEST(MessageParcelInit, WithoutMemoryForTheBufferIsLogged) {
  const support::LogCapture log;
  std::optional<MessageParcel> parcel;
  {
    const support::AllocationFault noBuffer(1);
    parcel.emplace(8U, nullptr, true);
    ASSERT_TRUE(noBuffer.Happened());
  }
  EXPECT_EQ(log.Lines(), (Lines{"4 msgBuffer is nullptr.(KT::MessageParcel::Init)"}));
  EXPECT_EQ(parcel->GetBuffer(), nullptr);
  ExpectInert(*parcel);
}

TEST(MessageParcelInit, WithoutMemoryForTheChannelIsLogged) {
  const support::LogCapture log;
  std::optional<MessageParcel> parcel;
  {
    const support::AllocationFault noChannel(2);
    parcel.emplace(8U, nullptr, true);
    ASSERT_TRUE(noChannel.Happened());
  }
  EXPECT_EQ(log.Lines(), (Lines{"4 ipcBuffer is nullptr.(KT::MessageParcel::Init)"}));
  ExpectInert(*parcel);
}

TEST(MessageParcelInit, WithoutMemoryForTheStreamIsLogged) {
  const support::LogCapture log;
  std::optional<MessageParcel> parcel;
  {
    const support::AllocationFault noStream(3);
    parcel.emplace(8U, nullptr, true);
    ASSERT_TRUE(noStream.Happened());
  }
  EXPECT_EQ(log.Lines(), (Lines{"4 ds is nullptr.(KT::MessageParcel::Init)"}));
  ExpectInert(*parcel);
}

TEST(MessageParcelInit, AReadingParcelAllocatesNoBuffer) {
  Bytes payload(8);
  const support::LogCapture log;
  {
    const support::AllocationFault noChannel(1);
    MessageParcel parcel(8, payload.data(), false);
  }
  EXPECT_EQ(log.Lines(), (Lines{"4 ipcBuffer is nullptr.(KT::MessageParcel::Init)"}));
}

TEST(MessageParcelInit, WithoutMemoryForTheScratchBlockIntegersStillTravel) {
  const support::LogCapture log;
  const support::AllocationFault noScratch(4);
  MessageParcel parcel(8, nullptr, true);
  ASSERT_TRUE(noScratch.Happened());
  parcel.WriteInt64(1);
  EXPECT_EQ(parcel.GetDataSize(), 8);
  EXPECT_TRUE(log.Lines().empty());
}

TEST(MessageParcelInit, CalledOnceMoreReadsTheNewBytes) {
  Bytes payload = Hex("01000000");
  MessageParcel parcel(8, nullptr, true);
  parcel.WriteInt32(7);
  parcel.Init(payload.data(), 4, false);
  EXPECT_EQ(parcel.ReadInt32(), 1);
  parcel.Init(nullptr, 8, true);
  EXPECT_NE(parcel.GetBuffer(), payload.data());
  parcel.WriteInt32(7);
  EXPECT_EQ(parcel.GetDataSize(), 8) << "results are kept";
}

TEST(MessageParcelInit, CalledOnceMoreWithoutMemoryLeavesNoStreamOfBefore) {
  Bytes payload = Hex("01000000");
  MessageParcel parcel(8, nullptr, true);
  {
    const support::AllocationFault noChannel(1);
    parcel.Init(payload.data(), 4, false);
    ASSERT_TRUE(noChannel.Happened());
  }
  ExpectInert(parcel);
}

TEST(MessageParcelInit, CalledOnceMoreWithABadSizeChangesNothing) {
  MessageParcel parcel(8, nullptr, true);
  std::uint8_t* const buffer = parcel.GetBuffer();
  parcel.Init(nullptr, 0, true);
  EXPECT_EQ(parcel.GetBuffer(), buffer);
  parcel.WriteInt32(7);
  EXPECT_EQ(parcel.GetDataSize(), 4);
}

TEST(MessageParcelInit, AWritingParcelIgnoresTheCallersBuffer) {
  std::uint8_t byte = 5;
  MessageParcel parcel(8, &byte, true);
  EXPECT_NE(parcel.GetBuffer(), &byte);
  parcel.WriteInt32(-1);
  EXPECT_EQ(byte, 5);
}

}  // namespace
}  // namespace codec_tests
