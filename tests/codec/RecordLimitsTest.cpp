#include <gtest/gtest.h>

#include <limits>

#include "codec/messages/CurrZentapMessages.h"
#include "codec/messages/TrustedZentapMessages.h"
#include "tests/codec/PayloadBytes.h"

namespace codec_tests {
namespace {

const Bytes kNoNamesInRequest = Hex("0000 0000");  // pkgName and sumId, both empty

const char* const kFreshFields1To23 =
    "00000000 00000000"                    // devType, extraInt1
    "0000 0000 0000 0000 0000 0000"        // summary to macAddr
    "0000000000000000"                     // macAddrInt
    "00000000 01000000 01000000 01000000"  // isPaired, shareType 1, isReverseChannel 1, isWifi5GAbility 1
    "00000000 0000 0000"                   // isAuthor, modelName, peerUuid
    "00000000 00000000 02000000"           // accountInfo, isTrusted, connectType 2
    "FFFFFFFF FFFFFFFF 00000000 0000";     // deviceType -1, extraInt2 -1, trustType, peerDeviceVersion
const char* const kFreshField24 = "00000000";
const char* const kFreshFields25To32 = "00000000 00000000 00000000 00000000 00000000 00000000 00000000 0000";

// A trusted request whose isPaired is the four bytes given.
bool ReadIsPaired(const char* fourBytes) {
  const std::size_t isPairedOffset = 4 + 4 + 4 + 12 + 8;
  Bytes payload = Joined({kNoNamesInRequest, Hex(kFreshFields1To23), Hex(kFreshField24)});
  const Bytes value = Hex(fourBytes);
  std::copy(value.begin(), value.end(), payload.begin() + isPairedOffset);
  return Decoded<KT::TrustedZentapDeviceSetRequest>(payload).info.isPaired;
}

TEST(Record, WhenFreshEncodesItsDefaults) {
  KT::TrustedZentapDeviceSetRequest trusted;
  trusted.info.extraInt1 = 0;
  EXPECT_EQ(Encoded(trusted), Joined({kNoNamesInRequest, Hex(kFreshFields1To23), Hex(kFreshField24)}));
  KT::CurrZentapDeviceSetRequest current;
  current.info.extraInt1 = 0;
  EXPECT_EQ(Encoded(current),
            Joined({kNoNamesInRequest, Hex(kFreshFields1To23), Hex(kFreshField24), Hex(kFreshFields25To32)}));
}

TEST(Record, WhenTrustedIsEightFieldsShorterThanAFullOne) {
  KT::TrustedZentapDeviceSetRequest trusted;
  KT::CurrZentapDeviceSetRequest current;
  EXPECT_EQ(Encoded(trusted).size(), 4U + 82U);
  EXPECT_EQ(Encoded(current).size(), 4U + 82U + 7U * 4U + 2U);
}

TEST(Record, ReadsEveryBoolButZeroAsTrue) {
  EXPECT_FALSE(ReadIsPaired("00000000"));
  EXPECT_TRUE(ReadIsPaired("01000000"));
  EXPECT_TRUE(ReadIsPaired("02000000"));
  EXPECT_TRUE(ReadIsPaired("00010000"));
  EXPECT_TRUE(ReadIsPaired("00000080"));
  EXPECT_TRUE(ReadIsPaired("FFFFFFFF"));
}

TEST(Record, KeepsEveryBitOfMacAddrIntAndTrustType) {
  for (const std::int64_t value : {std::int64_t{-1}, std::numeric_limits<std::int64_t>::min(),
                                   std::numeric_limits<std::int64_t>::max(), std::int64_t{-123456789012345}}) {
    KT::TrustedZentapDeviceSetRequest request;
    request.info.macAddrInt = value;
    request.info.trustType = 0xFFFFFFFF;
    const auto back = Decoded<KT::TrustedZentapDeviceSetRequest>(Encoded(request));
    EXPECT_EQ(back.info.macAddrInt, value);
    EXPECT_EQ(back.info.trustType, 0xFFFFFFFF);
  }
}

TEST(Record, MacAddrIntOfTheLargestUnsignedValueIsAllOnes) {
  KT::TrustedZentapDeviceSetRequest request;
  request.info.macAddrInt = static_cast<std::int64_t>(std::numeric_limits<std::uint64_t>::max());
  const Bytes bytes = Encoded(request);
  const std::size_t macAddrIntOffset = 4 + 4 + 4 + 12;
  EXPECT_EQ(Bytes(bytes.begin() + macAddrIntOffset, bytes.begin() + macAddrIntOffset + 8), Bytes(8, 0xFF));
}

TEST(Record, KeepsTheFullValueOfTheIntegersThatAnswerYesOrNo) {
  KT::CurrZentapDeviceSetRequest request;
  request.info.isConnected = std::numeric_limits<std::int32_t>::min();
  request.info.pairedDeviceIsReconnect = 1 << 30;
  const auto back = Decoded<KT::CurrZentapDeviceSetRequest>(Encoded(request));
  EXPECT_EQ(back.info.isConnected, std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(back.info.pairedDeviceIsReconnect, 1 << 30);
}

TEST(Record, CutShortReadsZerosAndEmptyStrings) {
  const auto request = Decoded<KT::TrustedZentapDeviceSetRequest>(Joined({kNoNamesInRequest, Hex("07000000")}));
  BluetoothDeviceSummary expected;
  expected.devType = 7;
  expected.extraInt1 = 0;
  expected.shareType = 0;
  expected.isReverseChannel = false;
  expected.isWifi5GAbility = false;
  expected.connectType = 0;
  expected.deviceType = 0;
  expected.extraInt2 = 0;
  EXPECT_EQ(request.info, expected);
}

TEST(Record, FromAnInertParcelReadsMinusOneAndTrue) {
  KT::TrustedZentapDeviceSetRequest request;
  request.Deserialize(std::make_shared<KT::MessageParcel>(0U, nullptr, true));
  EXPECT_EQ(request.info.devType, -1);
  EXPECT_EQ(request.info.macAddrInt, -1);
  EXPECT_EQ(request.info.trustType, 0xFFFFFFFFU);
  EXPECT_TRUE(request.info.isPaired);
  EXPECT_EQ(request.info.summary, "");
}

TEST(Record, ThatDoesNotFitIsWrittenOnAndReportsTheFirstFailure) {
  KT::TrustedZentapDeviceSetRequest request;
  request.info.summary = std::string(60, 's');  // does not fit, all that comes after it would
  const auto parcel = std::make_shared<KT::MessageParcel>(60U, nullptr, true);
  request.Serialize(parcel);
  EXPECT_EQ(parcel->GetDataSize(), -1);
  const Bytes start(parcel->GetBuffer(), parcel->GetBuffer() + 26);
  EXPECT_EQ(start, Joined({kNoNamesInRequest, Hex("00000000 00000000 3C00 0000 0000 0000 0000 0000 0000")}));
}

TEST(Record, WhoseLastStringDoesNotFitReportsNoFailure) {
  KT::CurrZentapDeviceGetResponse response;
  response.info.pairedDeviceReconnectPermit = "yes";
  const std::uint32_t size = 2 + 4 + 108 + 3;
  ASSERT_EQ(Encoded(response).size(), size);
  const auto parcel = std::make_shared<KT::MessageParcel>(size - 1, nullptr, true);
  response.Serialize(parcel);
  EXPECT_EQ(parcel->GetDataSize(), static_cast<int>(size - 5 + 1));
}

}  // namespace
}  // namespace codec_tests
