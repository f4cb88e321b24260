#include <gtest/gtest.h>

#include "codec/messages/CurrZentapMessages.h"
#include "tests/codec/SampleRecords.h"

namespace codec_tests {
namespace {

// What a reader gets of the sample: the read-back profile has no isSupportPlenix.
CurrZentapDeviceInfo SampleAsReadBack() {
  CurrZentapDeviceInfo record = SampleCurrent();
  record.isSupportPlenix = false;
  return record;
}

TEST(CurrZentapMessages, CarryTheirCodes) {
  EXPECT_EQ(KT::CurrZentapDeviceSetRequest::kCode, 0xc40005);
  EXPECT_EQ(KT::CurrZentapDeviceGetRequest::kCode, 0xc40006);
  EXPECT_EQ(KT::CurrZentapDeviceGetListRequest::kCode, 0xc40007);
  EXPECT_EQ(KT::CurrZentapDeviceDeleteRequest::kCode, 0xc40008);
}

TEST(CurrZentapMessages, SetRequestIsPkgNameSumIdAndTheFullRecord) {
  KT::CurrZentapDeviceSetRequest request;
  request.pkgName = "pé";
  request.sumId = "s1";
  request.info = SampleCurrent();
  const Bytes bytes = Joined({Hex("0300 70C3A9 0200 7331"), SampleFullBytes()});
  EXPECT_EQ(Encoded(request), bytes);
  EXPECT_EQ(Decoded<KT::CurrZentapDeviceSetRequest>(bytes), request);
}

TEST(CurrZentapMessages, SetResponseIsTheResultAlone) {
  KT::CurrZentapDeviceSetResponse response;
  response.result = -4999;
  EXPECT_EQ(Encoded(response), Hex("79ECFFFF"));
  EXPECT_EQ(Decoded<KT::CurrZentapDeviceSetResponse>(Hex("79ECFFFF")), response);
}

TEST(CurrZentapMessages, GetRequestIsPkgNameAndSumId) {
  KT::CurrZentapDeviceGetRequest request;
  request.pkgName = "pé";
  request.sumId = "s1";
  EXPECT_EQ(Encoded(request), Hex("0300 70C3A9 0200 7331"));
  EXPECT_EQ(Decoded<KT::CurrZentapDeviceGetRequest>(Hex("0300 70C3A9 0200 7331")), request);
}

TEST(CurrZentapMessages, GetResponseHasTheResultBeforeTheRecordWithoutIsSupportPlenix) {
  KT::CurrZentapDeviceGetResponse response;
  response.pkgName = "pé";
  response.result = 1;
  response.info = SampleCurrent();
  const Bytes bytes = Joined({Hex("0300 70C3A9 01000000"), SampleReadBackBytes()});
  EXPECT_EQ(Encoded(response), bytes);
  response.info = SampleAsReadBack();
  EXPECT_EQ(Decoded<KT::CurrZentapDeviceGetResponse>(bytes), response);
}

TEST(CurrZentapMessages, AReadRecordHoldsTheDefaultWhereTheProfileHasNoField) {
  Bytes bytes = Joined({Hex("0000 00000000"), SampleReadBackBytes()});
  KT::CurrZentapDeviceGetResponse response;
  response.info.isSupportPlenix = true;
  response.Deserialize(
      std::make_shared<KT::MessageParcel>(static_cast<std::uint32_t>(bytes.size()), bytes.data(), false));
  EXPECT_FALSE(response.info.isSupportPlenix);
}

TEST(CurrZentapMessages, GetListRequestIsPkgName) {
  KT::CurrZentapDeviceGetListRequest request;
  request.pkgName = "pé";
  EXPECT_EQ(Encoded(request), Hex("0300 70C3A9"));
  EXPECT_EQ(Decoded<KT::CurrZentapDeviceGetListRequest>(Hex("0300 70C3A9")), request);
}

TEST(CurrZentapMessages, GetListResponseHasTheResultAfterTheRecords) {
  KT::CurrZentapDeviceGetListResponse response;
  response.pkgName = "pé";
  response.count = 2;
  response.list = {SampleCurrent(), SampleCurrent()};
  response.result = 1;
  const Bytes bytes =
      Joined({Hex("0300 70C3A9 02000000"), SampleReadBackBytes(), SampleReadBackBytes(), Hex("01000000")});
  EXPECT_EQ(Encoded(response), bytes);
  response.list = {SampleAsReadBack(), SampleAsReadBack()};
  EXPECT_EQ(Decoded<KT::CurrZentapDeviceGetListResponse>(bytes), response);
}

TEST(CurrZentapMessages, DeleteRequestIsPkgNameAndSumId) {
  KT::CurrZentapDeviceDeleteRequest request;
  request.pkgName = "pé";
  request.sumId = "s1";
  EXPECT_EQ(Encoded(request), Hex("0300 70C3A9 0200 7331"));
  EXPECT_EQ(Decoded<KT::CurrZentapDeviceDeleteRequest>(Hex("0300 70C3A9 0200 7331")), request);
}

TEST(CurrZentapMessages, DeleteResponseIsTheResultAlone) {
  KT::CurrZentapDeviceDeleteResponse response;
  response.result = -4999;
  EXPECT_EQ(Encoded(response), Hex("79ECFFFF"));
  EXPECT_EQ(Decoded<KT::CurrZentapDeviceDeleteResponse>(Hex("79ECFFFF")), response);
}

}  // namespace
}  // namespace codec_tests
