#include "codec/messages/EncodedSize.h"

#include <gtest/gtest.h>

#include "codec/PayloadLimits.h"
#include "codec/messages/CurrZentapMessages.h"
#include "codec/messages/PeerSumMessages.h"
#include "codec/messages/TrustedZentapMessages.h"
#include "tests/codec/SampleRecords.h"

namespace codec_tests {
namespace {

TEST(EncodedSize, IsTheNumberOfBytesThatAMessageTakes) {
  KT::PeerSumGetResponse peer;
  peer.sumId = "é";
  EXPECT_EQ(KT::EncodedSize(peer), 8U);
  KT::TrustedZentapDeviceGetResponse trusted;
  trusted.info = SampleSummary();
  EXPECT_EQ(KT::EncodedSize(trusted), 6U + SampleTrustedBytes().size());
  KT::CurrZentapDeviceSetRequest full;
  full.info = SampleCurrent();
  EXPECT_EQ(KT::EncodedSize(full), 4U + SampleFullBytes().size());
  KT::CurrZentapDeviceGetResponse readBack;
  readBack.info = SampleCurrent();
  EXPECT_EQ(KT::EncodedSize(readBack), 6U + SampleReadBackBytes().size());
}

TEST(EncodedSize, OfASmallestRecordIsKnownForEachProfile) {
  EXPECT_EQ(KT::kSmallestRecordBytes<KT::Profile::Trusted>, 82U);
  EXPECT_EQ(KT::kSmallestRecordBytes<KT::Profile::Full>, 112U);
  EXPECT_EQ(KT::kSmallestRecordBytes<KT::Profile::CurrentReadBack>, 108U);
}

TEST(EncodedSize, OfAListCountsTheRecordsThatAreWritten) {
  KT::CurrZentapDeviceGetListResponse response;
  response.list.resize(3);
  EXPECT_EQ(KT::EncodedSize(response), 10U);
  response.count = 3;
  EXPECT_EQ(KT::EncodedSize(response), 10U + 3U * 108U);
  response.count = 4;
  EXPECT_EQ(KT::EncodedSize(response), 10U + 3U * 108U);
  response.count = -1;
  EXPECT_EQ(KT::EncodedSize(response), 10U);
}

TEST(EncodedSize, TellsWhetherAMessageFitsBeforeItIsEncoded) {
  KT::PeerSumGetRequest request;
  request.udId.assign(10238, 'u');
  EXPECT_EQ(KT::EncodedSize(request), static_cast<std::size_t>(KT::kMaxPayloadBytes));
  EXPECT_EQ(Encoded(request).size(), 10240U);
  request.udId.assign(100000, 'u');
  EXPECT_EQ(KT::EncodedSize(request), 100002U);
}

}  // namespace
}  // namespace codec_tests
