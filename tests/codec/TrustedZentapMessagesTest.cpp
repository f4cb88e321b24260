#include <gtest/gtest.h>

#include "codec/messages/TrustedZentapMessages.h"
#include "tests/codec/SampleRecords.h"

namespace codec_tests {
namespace {

TEST(TrustedZentapMessages, CarryTheirCodes) {
  EXPECT_EQ(KT::TrustedZentapDeviceSetRequest::kCode, 0xc40001);
  EXPECT_EQ(KT::TrustedZentapDeviceGetRequest::kCode, 0xc40002);
  EXPECT_EQ(KT::TrustedZentapDeviceGetListRequest::kCode, 0xc40003);
  EXPECT_EQ(KT::TrustedZentapDeviceDeleteRequest::kCode, 0xc40004);
}

TEST(TrustedZentapMessages, SetRequestIsPkgNameSumIdAndTheTrustedRecord) {
  KT::TrustedZentapDeviceSetRequest request;
  request.pkgName = "pé";
  request.sumId = "s1";
  request.info = SampleSummary();
  const Bytes bytes = Joined({Hex("0300 70C3A9 0200 7331"), SampleTrustedBytes()});
  EXPECT_EQ(Encoded(request), bytes);
  EXPECT_EQ(Decoded<KT::TrustedZentapDeviceSetRequest>(bytes), request);
}

TEST(TrustedZentapMessages, SetResponseEchoesPkgNameBeforeTheResult) {
  KT::TrustedZentapDeviceSetResponse response;
  response.pkgName = "pé";
  response.result = -4999;
  EXPECT_EQ(Encoded(response), Hex("0300 70C3A9 79ECFFFF"));
  EXPECT_EQ(Decoded<KT::TrustedZentapDeviceSetResponse>(Hex("0300 70C3A9 79ECFFFF")), response);
}

TEST(TrustedZentapMessages, GetRequestIsPkgNameAndSumId) {
  KT::TrustedZentapDeviceGetRequest request;
  request.pkgName = "pé";
  request.sumId = "s1";
  EXPECT_EQ(Encoded(request), Hex("0300 70C3A9 0200 7331"));
  EXPECT_EQ(Decoded<KT::TrustedZentapDeviceGetRequest>(Hex("0300 70C3A9 0200 7331")), request);
}

TEST(TrustedZentapMessages, GetResponseHasTheResultBeforeTheRecord) {
  KT::TrustedZentapDeviceGetResponse response;
  response.pkgName = "pé";
  response.result = 1;
  response.info = SampleSummary();
  const Bytes bytes = Joined({Hex("0300 70C3A9 01000000"), SampleTrustedBytes()});
  EXPECT_EQ(Encoded(response), bytes);
  EXPECT_EQ(Decoded<KT::TrustedZentapDeviceGetResponse>(bytes), response);
}

TEST(TrustedZentapMessages, GetListRequestIsPkgName) {
  KT::TrustedZentapDeviceGetListRequest request;
  request.pkgName = "pé";
  EXPECT_EQ(Encoded(request), Hex("0300 70C3A9"));
  EXPECT_EQ(Decoded<KT::TrustedZentapDeviceGetListRequest>(Hex("0300 70C3A9")), request);
}

TEST(TrustedZentapMessages, GetListResponseHasTheResultAfterTheRecords) {
  KT::TrustedZentapDeviceGetListResponse response;
  response.pkgName = "pé";
  response.count = 2;
  response.list = {SampleSummary(), SampleSummary()};
  response.result = 1;
  const Bytes bytes =
      Joined({Hex("0300 70C3A9 02000000"), SampleTrustedBytes(), SampleTrustedBytes(), Hex("01000000")});
  EXPECT_EQ(Encoded(response), bytes);
  EXPECT_EQ(Decoded<KT::TrustedZentapDeviceGetListResponse>(bytes), response);
}

TEST(TrustedZentapMessages, DeleteRequestIsPkgNameAndSumId) {
  KT::TrustedZentapDeviceDeleteRequest request;
  request.pkgName = "pé";
  request.sumId = "s1";
  EXPECT_EQ(Encoded(request), Hex("0300 70C3A9 0200 7331"));
  EXPECT_EQ(Decoded<KT::TrustedZentapDeviceDeleteRequest>(Hex("0300 70C3A9 0200 7331")), request);
}

TEST(TrustedZentapMessages, DeleteResponseIsTheResultAlone) {
  KT::TrustedZentapDeviceDeleteResponse response;
  response.result = -4999;
  EXPECT_EQ(Encoded(response), Hex("79ECFFFF"));
  EXPECT_EQ(Decoded<KT::TrustedZentapDeviceDeleteResponse>(Hex("79ECFFFF")), response);
}

}  // namespace
}  // namespace codec_tests
