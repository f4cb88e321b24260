#include <gtest/gtest.h>

#include "codec/Protocol.h"
#include "codec/messages/CurrZentapMessages.h"
#include "codec/messages/EncodedSize.h"
#include "codec/messages/TrustedZentapMessages.h"
#include "tests/codec/SampleRecords.h"

namespace codec_tests {
namespace {

using CurrentList = KT::CurrZentapDeviceGetListResponse;
using TrustedList = KT::TrustedZentapDeviceGetListResponse;

template <class List>
List ListOf(std::int32_t records) {
  List response;
  response.pkgName = "p";
  response.count = records;
  response.list.resize(static_cast<std::size_t>(records));
  response.result = -4996;
  return response;
}

// As many fresh records as fit into `bytes`, and a pkgName that takes up what is left.
template <class List>
List ListOfSize(std::size_t bytes) {
  List response;
  while (KT::EncodedSize(response) + 200 < bytes) {
    response.list.emplace_back();
    ++response.count;
  }
  response.pkgName.assign(bytes - KT::EncodedSize(response), 'p');
  return response;
}

template <class List>
std::int32_t SizeIn(int capacity, List response) {
  const auto parcel = std::make_shared<KT::MessageParcel>(static_cast<std::uint32_t>(capacity), nullptr, true);
  response.Serialize(parcel);
  return parcel->GetDataSize();
}

TEST(ListResponse, OfNoRecordsIsPkgNameZeroAndResult) {
  auto current = ListOf<CurrentList>(0);
  EXPECT_EQ(Encoded(current), Hex("0100 70 00000000 7CECFFFF"));
  auto trusted = ListOf<TrustedList>(0);
  EXPECT_EQ(Encoded(trusted), Hex("0100 70 00000000 7CECFFFF"));
}

TEST(ListResponse, ReadWithANegativeCountKeepsItAndReadsTheResult) {
  const auto response = Decoded<CurrentList>(Hex("0100 70 FEFFFFFF 07000000"));
  EXPECT_EQ(response.count, -2);
  EXPECT_TRUE(response.list.empty());
  EXPECT_EQ(response.result, 7);
}

TEST(ListResponse, WrittenWithANegativeCountHasNoRecords) {
  auto response = ListOf<TrustedList>(1);
  response.count = -1;
  EXPECT_EQ(Encoded(response), Hex("0100 70 FFFFFFFF 7CECFFFF"));
}

TEST(ListResponse, WritesCountRecordsOfALongerList) {
  auto response = ListOf<TrustedList>(2);
  response.count = 1;
  EXPECT_EQ(Encoded(response).size(), 3U + 4U + 82U + 4U);
}

TEST(ListResponse, WritesNoRecordThatIsNotThere) {
  auto response = ListOf<TrustedList>(1);
  response.count = 2;
  const Bytes bytes = Encoded(response);
  EXPECT_EQ(bytes.size(), 3U + 4U + 82U + 4U);
  EXPECT_EQ(bytes[3], 2) << "the count is written as it is";
}

TEST(ListResponse, AppendsToTheListThatIsThere) {
  auto sent = ListOf<TrustedList>(1);
  Bytes bytes = Encoded(sent);
  TrustedList received;
  received.list.push_back(SampleSummary());
  received.Deserialize(
      std::make_shared<KT::MessageParcel>(static_cast<std::uint32_t>(bytes.size()), bytes.data(), false));
  ASSERT_EQ(received.list.size(), 2U);
  EXPECT_EQ(received.list[0], SampleSummary());
  EXPECT_EQ(received.list[1], BluetoothDeviceSummary());
}

TEST(ListResponse, CutShortStillHasCountRecords) {
  const auto response = Decoded<TrustedList>(Joined({Hex("0000 03000000"), SampleTrustedBytes()}));
  EXPECT_EQ(response.count, 3);
  ASSERT_EQ(response.list.size(), 3U);
  EXPECT_EQ(response.list[0], SampleSummary());
  EXPECT_EQ(response.list[2].summary, "");
  EXPECT_EQ(response.list[2].shareType, 0);
  EXPECT_EQ(response.result, 0);
}

// 10,240 bytes hold at most 124 trusted records of 82 bytes, and 94 current ones of 108.
TEST(ListResponse, AppendsNoMoreRecordsThanAPayloadCanHold) {
  const auto trusted = Decoded<TrustedList>(Hex("0000 FFFFFF7F"));
  EXPECT_EQ(trusted.count, 0x7FFFFFFF);
  EXPECT_EQ(trusted.list.size(), 125U);
  const auto current = Decoded<CurrentList>(Hex("0000 FFFFFF7F"));
  EXPECT_EQ(current.count, 0x7FFFFFFF);
  EXPECT_EQ(current.list.size(), 95U);
}

TEST(ListResponse, OfAsManyRecordsAsAPayloadHoldsIsReadWhole) {
  auto sent = ListOf<TrustedList>(124);
  const auto received = Decoded<TrustedList>(Encoded(sent));
  EXPECT_EQ(received, sent);
  auto sentCurrent = ListOf<CurrentList>(94);
  EXPECT_EQ(Decoded<CurrentList>(Encoded(sentCurrent)), sentCurrent);
}

TEST(ListResponse, OfCurrentDevicesFitsIntoItsCapacityAndNotAByteMore) {
  const int capacity = KT::kCurrentListReplyCapacityBytes;
  EXPECT_EQ(capacity, 4096);
  EXPECT_EQ(SizeIn(capacity, ListOfSize<CurrentList>(4096)), 4096);
  EXPECT_EQ(SizeIn(capacity, ListOfSize<CurrentList>(4097)), -1);
}

TEST(ListResponse, OfTrustedDevicesFitsIntoItsCapacityAndNotAByteMore) {
  const int capacity = KT::kTrustedListReplyCapacityBytes;
  EXPECT_EQ(capacity, 10240);
  EXPECT_EQ(SizeIn(capacity, ListOfSize<TrustedList>(4097)), 4097);
  EXPECT_EQ(SizeIn(capacity, ListOfSize<TrustedList>(10240)), 10240);
  EXPECT_EQ(SizeIn(capacity, ListOfSize<TrustedList>(10241)), -1);
}

}  // namespace
}  // namespace codec_tests
