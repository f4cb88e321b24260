// marnockctl store show.
#include <gtest/gtest.h>

#include <filesystem>

#include "apps/json/ByteText.h"
#include "apps/json/RecordJson.h"
#include "tests/apps/StoreFixture.h"
#include "tests/apps/TemporaryFile.h"

namespace {

using KT::ExitStatus;
using support::FreshJournal;
using support::kCurrentFile;
using support::kPeerFile;
using support::kTrustedFile;
using support::PeerDatabase;
using support::TrustedDatabase;

class StoreShow : public support::StoreFixture {};

constexpr const char* kTwoPeers = "id  udId  sumId\n 1  u1    s1\n 2  u2    s2\n2 rows\n";

TEST_F(StoreShow, PrintsTheRowsOfATable) {
  Put(kPeerFile, PeerDatabase(2));
  for (const std::string& name : {std::string("peer"), std::string(kPeerFile), Windows(kPeerFile)}) {
    EXPECT_EQ(Tool({"store", "show", name}), ExitStatus::Done) << name;
    EXPECT_EQ(out, kTwoPeers);
    EXPECT_EQ(err, "");
  }
}

TEST_F(StoreShow, PrintsTheFieldsThatTell) {
  Put(kTrustedFile, TrustedDatabase("Phone\n"));
  EXPECT_EQ(Tool({"store", "show", "trusted"}), ExitStatus::Done);
  EXPECT_EQ(out.substr(0, out.find("  userName")),
            "id  sumId  devType  summary  deviceId  devName  ");  // wider than its title
  EXPECT_NE(out.find("\n 7  k\\xff  3        3        3         Phone\\x0a"), std::string::npos) << out;
  EXPECT_NE(out.find("\n1 row\n"), std::string::npos);
}

TEST_F(StoreShow, PrintsDevicesAsASetTakesThem) {
  Put(kTrustedFile, TrustedDatabase("Phone"));
  EXPECT_EQ(Tool({"--json", "store", "show", "trusted"}), ExitStatus::Done);
  const KT::Json document = KT::ParseJson(out);
  EXPECT_EQ(document.at("file"), Windows(kTrustedFile));
  EXPECT_EQ(document.at("table"), "trusted");
  EXPECT_TRUE(document.at("problem").is_null());
  ASSERT_EQ(document.at("rows").size(), 1U);
  EXPECT_EQ(document["rows"][0].at("id"), 7);
  EXPECT_EQ(document["rows"][0].at("sumId").dump(), R"({"hex":"6bff"})");
  BluetoothDeviceSummary device;
  KT::ReadRecord(document["rows"][0].at("device"), "the device", device);
  EXPECT_EQ(device.devName, "Phone");
  EXPECT_EQ(device.devType, 3);
  EXPECT_EQ(device.trustType, 3U);
  EXPECT_EQ(device.isPaired, true);
  EXPECT_EQ(device.extraInt1, 0) << "no column has it";
}

TEST_F(StoreShow, PrintsPeersAsJson) {
  Put(kPeerFile, PeerDatabase(1));
  EXPECT_EQ(Tool({"--json", "store", "show", "peer"}), ExitStatus::Done);
  EXPECT_EQ(KT::ParseJson(out).at("rows").dump(), R"([{"id":1,"udId":"u1","sumId":"s1"}])");
}

TEST_F(StoreShow, SaysThatThereAreNoRows) {
  Put(kPeerFile, PeerDatabase(0));
  EXPECT_EQ(Tool({"store", "show", "peer"}), ExitStatus::Done);
  EXPECT_EQ(out, "0 rows\n");
}

TEST_F(StoreShow, ShowsOlderCopiesAndWhatWasSetAside) {
  for (const char* suffix : {".tmp", ".bad-20261121T012345.678Z", ".tmp.bad-20261121T012345.678Z"}) {
    Put(std::string(kPeerFile) + suffix, PeerDatabase(2));
    EXPECT_EQ(Tool({"store", "show", std::string(kPeerFile) + suffix}), ExitStatus::Done) << suffix;
    EXPECT_EQ(out, kTwoPeers);
  }
}

TEST_F(StoreShow, TellsTheTableOfAnyFileByWhatItHolds) {
  const support::TemporaryFile peers(PeerDatabase(2));
  EXPECT_EQ(Tool({"store", "show", peers.Path()}), ExitStatus::Done);
  EXPECT_EQ(out, kTwoPeers);
  const support::TemporaryFile trusted(TrustedDatabase("Phone"));
  EXPECT_EQ(Tool({"--json", "store", "show", trusted.Path()}), ExitStatus::Done);
  EXPECT_EQ(KT::ParseJson(out).at("table"), "trusted");
  EXPECT_EQ(KT::ParseJson(out).at("file"), trusted.Path());
}

TEST_F(StoreShow, PrintsWhatCanBeReadOfADamagedFile) {
  std::string bytes = PeerDatabase(2);
  bytes.replace(0, 100, 100, 'x');
  Put(kPeerFile, bytes);
  const auto before = Content();
  EXPECT_EQ(Tool({"store", "show", "peer"}), ExitStatus::NeedsRepair);
  EXPECT_EQ(out, kTwoPeers);
  EXPECT_EQ(err,
            "marnockctl: " + Windows(kPeerFile) +
                " is damaged: file is not a database. These are the rows that can still be read; some may be old\n");
  EXPECT_EQ(Tool({"--json", "store", "show", "peer"}), ExitStatus::NeedsRepair);
  EXPECT_EQ(KT::ParseJson(out).at("problem"), "file is not a database");
  EXPECT_EQ(KT::ParseJson(out).at("rows").size(), 2U);
  EXPECT_EQ(Content(), before);
}

TEST_F(StoreShow, TellsTheTableOfADamagedFileByItsRows) {
  std::string bytes = TrustedDatabase("Phone");
  bytes.replace(0, 100, 100, 'x');
  const support::TemporaryFile file(bytes);
  EXPECT_EQ(Tool({"--json", "store", "show", file.Path()}), ExitStatus::NeedsRepair);
  EXPECT_EQ(KT::ParseJson(out).at("table"), "trusted");
  EXPECT_EQ(KT::ParseJson(out).at("rows")[0].at("device").at("devName"), "Phone");
}

TEST_F(StoreShow, SaysThatNothingCanBeReadOfAFile) {
  Put(kCurrentFile, "");
  EXPECT_EQ(Tool({"store", "show", "current"}), ExitStatus::Lost);
  EXPECT_EQ(out, "0 rows\n");
  EXPECT_EQ(err, "marnockctl: " + Windows(kCurrentFile) + " is damaged: it is empty. No row of it can be read\n");
}

TEST_F(StoreShow, DoesNotApplyAJournalThatWouldEmptyTheFile) {
  Put(kPeerFile, PeerDatabase(2));
  Put(std::string(kPeerFile) + "-journal", FreshJournal());
  EXPECT_EQ(Tool({"store", "show", "peer"}), ExitStatus::Done);
  EXPECT_EQ(out, kTwoPeers);
}

TEST_F(StoreShow, LooksAgainAtAFileThatMayJustBeSaved) {
  Put(kPeerFile, PeerDatabase(2));
  system_.Fail(support::SystemCall::ReadSharedFile, 1, platform::kErrorFileNotFound);
  EXPECT_EQ(Tool({"store", "show", "peer"}), ExitStatus::Done);
  EXPECT_EQ(out, kTwoPeers);
}

TEST_F(StoreShow, SaysThatThereIsNoSuchFile) {
  const support::TemporaryFile file("");
  for (const std::string& name : {std::string("peer"), std::string("nothing.db"), file.Path() + ".db"}) {
    EXPECT_EQ(Tool({"store", "show", name}), ExitStatus::NotFound) << name;
    EXPECT_EQ(out, "");
    EXPECT_EQ(err, "marnockctl: there is no file " + KT::ToTerminalText(name) + "\n");
  }
}

TEST_F(StoreShow, ComplainsAboutWhatCannotBeRead) {
  std::filesystem::create_directory(profile_.NativeFile(kPeerFile));
  EXPECT_EQ(Tool({"store", "show", "peer"}), ExitStatus::Undecided);
  EXPECT_EQ(out, "");
  EXPECT_EQ(err.find("marnockctl: " + Windows(kPeerFile) + " cannot be read: access is denied"), 0U) << err;
}

TEST_F(StoreShow, NeedsAFile) {
  EXPECT_EQ(Tool({"store", "show"}), ExitStatus::WrongUse);
  EXPECT_EQ(Tool({"store"}), ExitStatus::WrongUse);
  EXPECT_EQ(Tool({"store", "mend"}), ExitStatus::WrongUse);
}

}  // namespace
