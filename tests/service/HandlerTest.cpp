// What the handlers do between arrival and answer: decoding, the store, results, replies.
#include <gtest/gtest.h>

#include <limits>

#include "codec/messages/CurrZentapMessages.h"
#include "codec/messages/PeerSumMessages.h"
#include "codec/messages/TrustedZentapMessages.h"
#include "tests/service/ServiceFixture.h"
#include "tests/support/FaultVfs.h"

namespace {

using Lines = std::vector<std::string>;

KT::TrustedZentapDeviceSetRequest SetTrusted(const std::string& sumId, const std::string& devName) {
  KT::TrustedZentapDeviceSetRequest request;
  request.pkgName = "pkg";
  request.sumId = sumId;
  request.info.devName = devName;
  return request;
}

KT::PeerSumSetRequest SetPeer(const std::string& udId, const std::string& sumId) {
  KT::PeerSumSetRequest request;
  request.udId = udId;
  request.sumId = sumId;
  return request;
}

template <class Request>
Request WithKey(const std::string& sumId) {
  Request request;
  request.pkgName = "pkg";
  request.sumId = sumId;
  return request;
}

class Handlers : public support::ServiceFixture {
 protected:
  bool Logged(const std::string& line) const {
    const Lines lines = log.Lines();
    return std::find(lines.begin(), lines.end(), line) != lines.end();
  }
};

TEST_F(Handlers, APeerReplyHasExactlyTheseBytes) {
  Deliver(0xc40009, std::string("\x02\x00\x75\x31\x03\x00\x73\xC3\xA9", 9));  // "u1", "sé"
  ASSERT_EQ(ipc.posted.size(), 1U);
  EXPECT_EQ(ipc.posted[0].payload, std::string("\0\0\0\0", 4));  // result 0
  ipc.posted.clear();
  Deliver(0xc4000a, std::string("\x02\x00\x75\x31", 4));
  ASSERT_EQ(ipc.posted.size(), 1U);
  EXPECT_EQ(ipc.posted[0].payload, std::string("\x03\x00\x73\xC3\xA9\0\0\0\0", 9));
  ipc.posted.clear();
  Deliver(0xc4000a, std::string("\x01\x00'", 3));  // a quote breaks the query: -4996 is ec 7c ff ff
  ASSERT_EQ(ipc.posted.size(), 1U);
  EXPECT_EQ(ipc.posted[0].payload, std::string("\0\0\x7C\xEC\xFF\xFF", 6));
}

TEST_F(Handlers, GetPeerLogsTheSumIdThatTheStoreReturned) {
  Ask(SetPeer("peer", "the-sum"));
  log.Take();
  KT::PeerSumGetRequest get;
  get.udId = "peer";
  Ask(get);
  EXPECT_EQ(log.Take().back(), "3 [KTData] udId:peer, sumId:the-sum, result:0(KT::Marnock::GetPeerDevice)");
}

TEST_F(Handlers, ValuesInLogLinesAreConvertedAndIllFormedBytesDoNotBreakALine) {
  Ask(SetPeer("p\xC3\xA9\xFFz", "s"));
  EXPECT_EQ(log.Take().back(), "3 [KTData] udId:p\xC3\xA9\xEF\xBF\xBDz, result:0(KT::Marnock::SetPeerDevice)");
}

TEST_F(Handlers, ASetWithAQuoteIsStoredButCannotBeReadBack) {
  EXPECT_EQ(Ask(SetPeer("it's", "sum")).result, 0);
  KT::PeerSumGetRequest get;
  get.udId = "it's";
  EXPECT_EQ(Ask(get).result, -4996);
  KT::PeerSumDeleteRequest remove;
  remove.udId = "it's";
  EXPECT_EQ(Ask(remove).result, -4996);
  EXPECT_TRUE(Logged("4 [KTData] Get peer device failed.(KT::DevicePersistence::GetPeerDevice)"));
  EXPECT_TRUE(Logged("4 [KTData] Delete peer device info failed.(KT::DevicePersistence::DeletePeerDevice)"));
}

TEST_F(Handlers, ATapDeviceWithAQuoteInItsKeyIsInsertedAndThenOnlyListed) {
  EXPECT_EQ(Ask(SetTrusted("it's", "Phone")).result, 0);
  EXPECT_EQ(Ask(WithKey<KT::TrustedZentapDeviceGetRequest>("it's")).result, -4996);
  EXPECT_EQ(Ask(WithKey<KT::TrustedZentapDeviceDeleteRequest>("it's")).result, -4999);
  KT::TrustedZentapDeviceGetListRequest list;
  const auto answer = Ask(list);
  EXPECT_EQ(answer.result, 0);
  ASSERT_EQ(answer.count, 1);
  EXPECT_EQ(answer.list.at(0).devName, "Phone");
}

TEST_F(Handlers, AnswersEchoThePackageNameWhereTheMessageHasOne) {
  EXPECT_EQ(Ask(SetTrusted("s", "d")).pkgName, "pkg");
  EXPECT_EQ(Ask(WithKey<KT::TrustedZentapDeviceGetRequest>("s")).pkgName, "pkg");
  EXPECT_EQ(Ask(WithKey<KT::CurrZentapDeviceGetRequest>("s")).pkgName, "pkg");
  KT::CurrZentapDeviceGetListRequest list;
  list.pkgName = "lister";
  EXPECT_EQ(Ask(list).pkgName, "lister");
}

TEST_F(Handlers, ACurrentDeviceComesBackWithoutTheFieldsThatItsTableLacks) {
  auto set = WithKey<KT::CurrZentapDeviceSetRequest>("s");
  set.info.devName = "Phone";
  set.info.deviceId = "not stored";
  set.info.isSupportPlenix = true;
  set.info.extraInt1 = 5;
  set.info.extraInt2 = 6;
  set.info.trustType = std::numeric_limits<std::uint32_t>::max();
  set.info.isPhoneMirrorSupported = 7;
  set.info.multiDeviceSyncSwitch = 9;
  EXPECT_EQ(Ask(set).result, 0);
  CurrZentapDeviceInfo expected;
  expected.devName = "Phone";
  expected.trustType = std::numeric_limits<std::uint32_t>::max();
  expected.isPhoneMirrorSupported = 7;
  expected.multiDeviceSyncSwitch = 9;
  EXPECT_TRUE(Ask(WithKey<KT::CurrZentapDeviceGetRequest>("s")).info == expected);
}

TEST_F(Handlers, AnUnknownKeyIsAnsweredWithSuccessAndTheDefaults) {
  const auto answer = Ask(WithKey<KT::TrustedZentapDeviceGetRequest>("nobody"));
  EXPECT_EQ(answer.result, 0);
  EXPECT_TRUE(answer.info == BluetoothDeviceSummary());
  KT::PeerSumGetRequest get;
  get.udId = "nobody";
  EXPECT_EQ(Ask(get).sumId, "");
}

TEST_F(Handlers, DeletingAnUnknownKeySucceedsAndStillSaves) {
  EXPECT_EQ(Ask(WithKey<KT::CurrZentapDeviceDeleteRequest>("nobody")).result, 0);
  EXPECT_TRUE(std::filesystem::exists(profile.NativeFile("CurrentZentapDeviceInfo1G12NJ9DS39D.db")));
}

TEST_F(Handlers, AChangeIsOnTheDiskBeforeItsReply) {
  Ask(SetPeer("peer", "sum"));
  const std::string bytes = support::ReadBytes(profile.NativeFile("PeerDeviceInfo1G12NJ9DS39D.db"));
  EXPECT_NE(bytes.find("peersum"), std::string::npos);  // the two texts lie side by side in the row
}

TEST_F(Handlers, ARequestOverTheParcelsLimitIsNotDecoded) {
  std::string payload = Encode(SetPeer("p", std::string(10'235, 's')));
  ASSERT_EQ(payload.size(), 10'240U);
  Deliver(0xc40009, payload);
  EXPECT_EQ(log.Take().back(), "3 [KTData] udId:p, result:0(KT::Marnock::SetPeerDevice)");
  Deliver(0xc40009, payload + "x");
  EXPECT_TRUE(Logged("4 The parameter invalid.(KT::MessageParcel::Init)"));
  EXPECT_EQ(log.Take().back(), "3 [KTData] udId:, result:0(KT::Marnock::SetPeerDevice)");
}

TEST_F(Handlers, ATruncatedRequestIsAnsweredAtEveryLength) {
  const std::string whole = Encode(SetTrusted("key", "name"));
  for (std::size_t size = 1; size < whole.size(); ++size) {
    ipc.posted.clear();
    Deliver(0xc40001, whole.substr(0, size));
    ASSERT_EQ(ipc.posted.size(), 1U) << size;
    EXPECT_EQ(Decode<KT::TrustedZentapDeviceSetResponse>(ipc.posted[0].payload).result, 0) << size;
  }
}

TEST_F(Handlers, AnAnswerThatPassesItsCapacityIsPostedWithItsNegativeLength) {
  // A get of the smallest trusted record takes 12 + 4 + 82 bytes with a package name of 10.
  auto set = SetTrusted("fits", std::string(1'024 - 12 - 4 - 82, 'n'));
  Ask(set);
  auto get = WithKey<KT::TrustedZentapDeviceGetRequest>("fits");
  get.pkgName = "0123456789";
  EXPECT_EQ(Ask(get).result, 0);
  EXPECT_EQ(ipc.posted.at(0).item.length, 1'024);

  set.info.devName += "n";
  Ask(set);
  ipc.posted.clear();
  Deliver(0xc40002, Encode(get));
  ASSERT_EQ(ipc.posted.size(), 1U);
  EXPECT_EQ(ipc.posted[0].item.length, -1);
}

// A current record in a list takes 31 fields: 20 of 4 bytes, one of 8 and 10 strings, so 108 bytes when all are empty;
// a trusted one 14 of 4 bytes, one of 8 and 9 strings, so 82. Around the records: pkgName, count and result.
TEST_F(Handlers, ACurrentListJustFillsItsReplyAndPassesItWithOneByteMore) {
  auto set = WithKey<KT::CurrZentapDeviceSetRequest>("a");
  set.info.devName = std::string(2'000, 'n');
  Ask(set);
  set.sumId = "b";
  set.info.devName = std::string(4'096 - 2'000 - 2 * 108 - 2 - 8, 'n');
  Ask(set);
  const std::string request("\0\0", 2);
  ipc.posted.clear();
  Deliver(0xc40007, request);
  EXPECT_EQ(ipc.posted.at(0).item.length, 4'096);
  set.info.devName += "n";
  Ask(set);
  ipc.posted.clear();
  Deliver(0xc40007, request);
  EXPECT_EQ(ipc.posted.at(0).item.length, -1);
}

TEST_F(Handlers, ATrustedListJustFillsItsReplyAndPassesItWithOneByteMore) {
  Ask(SetTrusted("a", std::string(5'000, 'n')));
  auto set = SetTrusted("b", std::string(10'240 - 5'000 - 2 * 82 - 2 - 8, 'n'));
  Ask(set);
  const std::string request("\0\0", 2);
  ipc.posted.clear();
  Deliver(0xc40003, request);
  EXPECT_EQ(ipc.posted.at(0).item.length, 10'240);
  set.info.devName += "n";
  Ask(set);
  ipc.posted.clear();
  Deliver(0xc40003, request);
  EXPECT_EQ(ipc.posted.at(0).item.length, -1);
}

TEST_F(Handlers, AStoreWithoutATableAnswersFailureCodes) {
  Stop();
  profile.MakeDatabaseFolder();
  for (const char* file : {"PeerDeviceInfo1G12NJ9DS39D.db", "CurrentZentapDeviceInfo1G12NJ9DS39D.db",
                           "TrustedZentapDeviceInfo2G12NJ9DS39D.db"}) {
    support::WriteBytes(profile.NativeFile(file), "");  // an empty database: it loads, and has no table
  }
  Start();
  EXPECT_EQ(Ask(SetTrusted("s", "d")).result, -4999);
  EXPECT_EQ(Ask(WithKey<KT::TrustedZentapDeviceDeleteRequest>("s")).result, -4999);
  EXPECT_EQ(Ask(WithKey<KT::TrustedZentapDeviceGetRequest>("s")).result, -4996);
  EXPECT_EQ(Ask(WithKey<KT::CurrZentapDeviceSetRequest>("s")).result, -4999);
  EXPECT_EQ(Ask(WithKey<KT::CurrZentapDeviceGetRequest>("s")).result, -4996);
  EXPECT_EQ(Ask(SetPeer("p", "s")).result, -4996);
  const auto list = Ask(KT::CurrZentapDeviceGetListRequest());
  EXPECT_EQ(list.result, -4996);
  EXPECT_EQ(list.count, 0);
  EXPECT_TRUE(list.list.empty());
}

TEST_F(Handlers, ASaveThatFailsIsStillAnsweredWithSuccess) {
  std::filesystem::create_directories(profile.NativeFile("PeerDeviceInfo1G12NJ9DS39D.db"));
  EXPECT_EQ(Ask(SetPeer("p", "s")).result, 0);
  EXPECT_TRUE(Logged("4 [KTData] Save database filed:unable to open database file(KT::DbEngine::SaveDbIntoDisk)"));
}

}  // namespace
