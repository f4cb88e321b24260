#include <gtest/gtest.h>

#include "codec/messages/PeerSumMessages.h"
#include "tests/codec/PayloadBytes.h"

namespace codec_tests {
namespace {

TEST(PeerSumMessages, CarryTheirCodes) {
  EXPECT_EQ(KT::PeerSumSetRequest::kCode, 0xc40009);
  EXPECT_EQ(KT::PeerSumGetRequest::kCode, 0xc4000a);
  EXPECT_EQ(KT::PeerSumDeleteRequest::kCode, 0xc4000b);
}

TEST(PeerSumMessages, SetRequestIsUdIdThenSumId) {
  KT::PeerSumSetRequest request;
  request.udId = "ü1";
  request.sumId = "s22";
  const Bytes bytes = Hex("0300 C3BC31 0300 733232");
  EXPECT_EQ(Encoded(request), bytes);
  EXPECT_EQ(Decoded<KT::PeerSumSetRequest>(bytes), request);
}

TEST(PeerSumMessages, SetResponseIsTheResultAlone) {
  KT::PeerSumSetResponse response;
  response.result = -4996;
  EXPECT_EQ(Encoded(response), Hex("7CECFFFF"));
  EXPECT_EQ(Decoded<KT::PeerSumSetResponse>(Hex("7CECFFFF")), response);
}

TEST(PeerSumMessages, GetRequestIsTheUdId) {
  KT::PeerSumGetRequest request;
  request.udId = "ü1";
  EXPECT_EQ(Encoded(request), Hex("0300 C3BC31"));
  EXPECT_EQ(Decoded<KT::PeerSumGetRequest>(Hex("0300 C3BC31")), request);
}

TEST(PeerSumMessages, GetResponseIsSumIdThenResult) {
  KT::PeerSumGetResponse response;
  response.sumId = "s22";
  response.result = 1;
  EXPECT_EQ(Encoded(response), Hex("0300 733232 01000000"));
  EXPECT_EQ(Decoded<KT::PeerSumGetResponse>(Hex("0300 733232 01000000")), response);
}

TEST(PeerSumMessages, GetResponseWithoutASumIdIsTwoZerosAndTheResult) {
  KT::PeerSumGetResponse response;
  response.result = -4996;
  EXPECT_EQ(Encoded(response), Hex("0000 7CECFFFF"));
}

TEST(PeerSumMessages, DeleteRequestIsTheUdId) {
  KT::PeerSumDeleteRequest request;
  request.udId = "ü1";
  EXPECT_EQ(Encoded(request), Hex("0300 C3BC31"));
  EXPECT_EQ(Decoded<KT::PeerSumDeleteRequest>(Hex("0300 C3BC31")), request);
}

TEST(PeerSumMessages, DeleteResponseIsTheResultAlone) {
  KT::PeerSumDeleteResponse response;
  response.result = -1;
  EXPECT_EQ(Encoded(response), Hex("FFFFFFFF"));
  EXPECT_EQ(Decoded<KT::PeerSumDeleteResponse>(Hex("FFFFFFFF")), response);
}

TEST(PeerSumMessages, DoNothingWithoutAParcel) {
  KT::PeerSumSetRequest request;
  request.udId = "u";
  request.Serialize(nullptr);
  request.Deserialize(nullptr);
  EXPECT_EQ(request.udId, "u");
}

TEST(PeerSumMessages, ReadFromAnInertParcelAsEmptyAndMinusOne) {
  KT::PeerSumGetResponse response;
  response.sumId = "before";
  response.Deserialize(std::make_shared<KT::MessageParcel>(0U, nullptr, true));
  EXPECT_EQ(response.sumId, "");
  EXPECT_EQ(response.result, -1);
}

TEST(PeerSumMessages, ThatRunShortReadAsEmptyAndZero) {
  KT::PeerSumGetResponse response = Decoded<KT::PeerSumGetResponse>(Hex("0100 61 0100"));
  EXPECT_EQ(response.sumId, "a");
  EXPECT_EQ(response.result, 0);
}

}  // namespace
}  // namespace codec_tests
