// marnockctl store check.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>

#include "apps/json/JsonDocument.h"
#include "apps/marnockctl/StoreLook.h"
#include "apps/marnockctl/StoreReport.h"
#include "tests/apps/StoreFixture.h"

namespace {

using KT::ExitStatus;
using support::FreshJournal;
using support::kCurrentFile;
using support::kPeerFile;
using support::kTrustedFile;
using support::PeerDatabase;
using support::SystemCall;
using support::TrustedDatabase;

class StoreCheck : public support::StoreFixture {
 protected:
  // The block of a table whose file is not there.
  std::string AbsentBlock(const std::string& table, const std::string& file) const {
    return "table      " + table + "\nfile       " + Windows(file) +
           "\nstate      the file is absent\ncondition  absent\n\n";
  }
  std::string OthersAbsent() const {
    return AbsentBlock("current", kCurrentFile) + AbsentBlock("trusted", kTrustedFile);
  }
};

constexpr const char* kWell = "every file is whole, or was never written\n";
constexpr const char* kCutShort =
    "a save was cut short; nothing is lost, and a repair or the host's next start mends it\n";
constexpr const char* kLost = "something that was saved cannot be brought back\n";

TEST_F(StoreCheck, FindsNothingWrongWithAStoreThatWasNeverWritten) {
  EXPECT_EQ(Tool({"store", "check"}), ExitStatus::Done);
  EXPECT_EQ(out, AbsentBlock("peer", kPeerFile) + OthersAbsent() + kWell);
  EXPECT_EQ(err, "");
}

TEST_F(StoreCheck, FindsNothingWrongWithoutTheFolder) {
  std::filesystem::remove_all(profile_.NativeRoot());
  EXPECT_EQ(Tool({"store", "check"}), ExitStatus::Done);
  EXPECT_EQ(out, AbsentBlock("peer", kPeerFile) + OthersAbsent() + kWell);
  EXPECT_EQ(err, "");
}

TEST_F(StoreCheck, CountsTheRowsOfWholeFiles) {
  Put(kPeerFile, PeerDatabase(12));
  EXPECT_EQ(Tool({"store", "check"}), ExitStatus::Done);
  EXPECT_EQ(out,
            "table      peer\nfile       " + Windows(kPeerFile) +
                "\nstate      the file is whole\ncondition  whole\nintegrity  ok\nschema     ok\nrows       12\n\n" +
                OthersAbsent() + kWell);
}

TEST_F(StoreCheck, TellsWhatARepairWouldDo) {
  Put(kPeerFile, "rubbish");
  Put(std::string(kPeerFile) + "-journal", FreshJournal());
  Put(std::string(kPeerFile) + ".tmp", PeerDatabase(2));
  const auto before = Content();
  EXPECT_EQ(Tool({"store", "check"}), ExitStatus::NeedsRepair);
  const std::string path = Windows(kPeerFile);
  EXPECT_EQ(out, "table       peer\nfile        " + path +
                     "\nstate       the file is not whole, its older copy is\ncondition   repairable\n"
                     "integrity   file is not a database\nschema      not looked at\n"
                     "journal     of a save that began with an empty file; it must not be applied\n"
                     "older copy  whole, rows: 2\n"
                     "to do       delete the unfinished " +
                     path + "\n            delete " + path + "-journal\n            restore the file from " + path +
                     ".tmp\n\n" + OthersAbsent() + kCutShort);
  EXPECT_EQ(err, "");
  EXPECT_EQ(Content(), before);
}

TEST_F(StoreCheck, TellsOfALossAndOfWhatWasSetAside) {
  const std::string bad = std::string(kTrustedFile) + ".bad-20261121T012345.678Z";
  const std::string badCopy = std::string(kTrustedFile) + ".tmp.bad-20261121T012345.678Z";
  Put(kTrustedFile, support::DatabaseMadeBy("CREATE TABLE other(a)"));
  Put(std::string(kTrustedFile) + "-journal", "");
  Put(std::string(kTrustedFile) + ".tmp", "");
  Put(bad, "1");
  Put(badCopy, "2");
  Put("another.bad-1", "3");
  EXPECT_EQ(Tool({"store", "check"}), ExitStatus::Lost);
  const std::string path = Windows(kTrustedFile);
  EXPECT_EQ(out, AbsentBlock("peer", kPeerFile) + AbsentBlock("current", kCurrentFile) +
                     "table       trusted\nfile        " + path +
                     "\nstate       the file is not whole, and there is no whole older copy\ncondition   lost\n"
                     "integrity   ok\nschema      the table trustedZentapDeviceInfo is missing\n"
                     "journal     of a change that was not finished, or of another program\n"
                     "older copy  not whole: it is empty\n"
                     "to do       let SQLite roll back " +
                     path + "\n            set aside " + path + "\n            delete " + path +
                     "-journal\n            set aside " + path + ".tmp\n" + "set aside   " + bad + "\n            " +
                     badCopy + "\n\n" + kLost);
}

TEST_F(StoreCheck, PrintsOneJsonDocument) {
  Put(kPeerFile, "rubbish");
  Put(std::string(kPeerFile) + ".tmp", PeerDatabase(2));
  Put(std::string(kPeerFile) + ".bad-1", "");
  Put(kTrustedFile, TrustedDatabase("N"));
  EXPECT_EQ(Tool({"--json", "store", "check"}), ExitStatus::NeedsRepair);
  EXPECT_EQ(out.find('\n'), out.size() - 1);
  const KT::Json document = KT::ParseJson(out);
  EXPECT_EQ(document.at("hostRunning"), false);
  ASSERT_EQ(document.at("files").size(), 3U);
  const KT::Json& peer = document["files"][0];
  EXPECT_EQ(peer.at("table"), "peer");
  EXPECT_EQ(peer.at("path"), Windows(kPeerFile));
  EXPECT_EQ(peer.at("condition"), "repairable");
  EXPECT_EQ(peer.at("state"), "the file is not whole, its older copy is");
  EXPECT_EQ(peer.at("rule"), 3);
  EXPECT_EQ(peer.at("database").dump(),
            R"({"bytes":7,"integrity":"file is not a database","schema":null,"rows":null})");
  EXPECT_EQ(peer.at("journal"), "none");
  EXPECT_EQ(peer.at("temporary").dump(), R"({"bytes":12288,"integrity":"ok","schema":"ok","rows":2})");
  EXPECT_EQ(peer.at("steps"),
            (KT::Json{"set aside " + Windows(kPeerFile), "restore the file from " + Windows(kPeerFile) + ".tmp"}));
  EXPECT_EQ(peer.at("setAside"), KT::Json::array({std::string(kPeerFile) + ".bad-1"}));
  const KT::Json& current = document["files"][1];
  EXPECT_EQ(current.at("condition"), "absent");
  EXPECT_TRUE(current.at("database").is_null());
  EXPECT_TRUE(current.at("temporary").is_null());
  EXPECT_EQ(document["files"][2].at("condition"), "whole");
  EXPECT_EQ(document["files"][2].at("database").at("rows"), 1);
}

// A running host has just renamed the file and is writing the new one.
TEST_F(StoreCheck, LooksAgainBeforeItReportsAFileThatMayJustBeSaved) {
  Put(kPeerFile, PeerDatabase(3));
  Put(kCurrentFile, "damaged");
  system_.Fail(SystemCall::ReadSharedFile, 1, platform::kErrorFileNotFound);
  EXPECT_EQ(Tool({"store", "check"}), ExitStatus::Lost);
  EXPECT_EQ(out.find("table      peer\nfile       " + Windows(kPeerFile) + "\nstate      the file is whole\n"), 0U)
      << out;
}

// A host that saves one change after the other: no look finds the file whole, and each finds it different.
TEST_F(StoreCheck, TakesAFileThatKeepsChangingForOneThatIsBeingSaved) {
  int round = 0;
  Put(kPeerFile, "unfinished");
  Put(kCurrentFile, "cut short");
  const auto looks = KT::LookAtStore(profile_.Root() + L"\\Orvnta\\DeviceMgr\\", [&](std::chrono::milliseconds) {
    Put(kPeerFile, "unfinished " + std::to_string(++round));
  });
  EXPECT_TRUE(looks.at(0).isBeingSaved);
  EXPECT_FALSE(looks.at(1).isBeingSaved);
  const std::string text = KT::StoreText({looks[0]});
  EXPECT_NE(text.find("\ncondition  being saved\n"), std::string::npos) << text;
  EXPECT_EQ(text.find("to do"), std::string::npos) << text;
  EXPECT_EQ(KT::StoreJson(looks)[0].at("condition"), "being saved");
  EXPECT_EQ(KT::StoreJson(looks)[1].at("condition"), "lost");
}

// The save is over after a while. Until then neither the journal nor the older copy is opened.
TEST_F(StoreCheck, WaitsForTheEndOfASave) {
  const std::string journal = std::string(kPeerFile) + "-journal";
  Put(kPeerFile, PeerDatabase(1));
  Put(journal, FreshJournal());
  int sleeps = 0;
  const auto looks = KT::LookAtStore(profile_.Root() + L"\\Orvnta\\DeviceMgr\\", [&](std::chrono::milliseconds) {
    if (++sleeps == 9) {
      std::filesystem::remove(profile_.NativeFile(journal));
    }
  });
  EXPECT_EQ(sleeps, 9);
  EXPECT_EQ(looks.at(0).plan.condition, KT::Condition::Whole);
  const auto& calls = system_.Calls();
  const auto read = std::find_if(calls.begin(), calls.end(),
                                 [](const std::string& call) { return call.starts_with("ReadSharedFile"); });
  const auto lastWait = std::find_if(calls.rbegin(), calls.rend(), [&](const std::string& call) {
    return call == "GetFileAttributesW(" + Windows(journal) + ")";
  });
  EXPECT_GT(read, lastWait.base() - 1);
}

TEST_F(StoreCheck, SaysThatAHostIsRunningBesideWhatIsToBeRepaired) {
  StartHub([] { return std::string("{}"); });
  Put(kPeerFile, "rubbish");
  EXPECT_EQ(Tool({"store", "check"}), ExitStatus::Lost);
  EXPECT_EQ(err,
            "marnockctl: a host is running: the next change of a table writes its file anew, and the host's next start "
            "repairs the rest\n");
  Put(kPeerFile, PeerDatabase(1));
  EXPECT_EQ(Tool({"--json", "store", "check"}), ExitStatus::Done);
  EXPECT_EQ(out.find("{\"hostRunning\":true,\"files\":[{"), 0U) << out;
  EXPECT_EQ(err, "");
}

TEST_F(StoreCheck, ReportsTheOtherFilesBesideOneThatCannotBeRead) {
  std::filesystem::create_directory(profile_.NativeFile(kPeerFile));
  Put(kCurrentFile, "rubbish");
  EXPECT_EQ(Tool({"store", "check"}), ExitStatus::Undecided);
  const std::string why =
      Windows(kPeerFile) +
      " cannot be read: access is denied, or a folder stands in its place. End the program that holds "
      "it, or give this one the right to read it, and try again.";
  EXPECT_EQ(out.find("table  peer\nfile   " + Windows(kPeerFile) + "\nstate  unreadable: " + why +
                     "\n\ntable      current\n"),
            0U)
      << out;
  EXPECT_NE(out.find("condition  lost\n"), std::string::npos) << out;
  EXPECT_NE(out.find("\n\nnot every file can be read\n"), std::string::npos) << out;
  EXPECT_EQ(Tool({"--json", "store", "check"}), ExitStatus::Undecided);
  EXPECT_EQ(KT::ParseJson(out).at("files")[0].dump(), KT::Json({{"table", "peer"},
                                                                {"path", Windows(kPeerFile)},
                                                                {"condition", "unreadable"},
                                                                {"state", why},
                                                                {"setAside", KT::Json::array()}})
                                                          .dump());
}

TEST_F(StoreCheck, ComplainsWhenTheFolderCannotBeRead) {
  system_.Fail(SystemCall::ListFiles, 1, platform::kErrorAccessDenied);
  EXPECT_EQ(Tool({"store", "check"}), ExitStatus::Undecided);
  EXPECT_EQ(out, "");
  EXPECT_EQ(err, "marnockctl: the folder " + Windows("") +
                     " cannot be read: access is denied, or a folder stands in its place\n");
}

TEST_F(StoreCheck, ComplainsWhenTheUserIsNotKnown) {
  system_.Fail(SystemCall::GetUserNameSamCompatible, 1);
  EXPECT_EQ(Tool({"store", "check"}), ExitStatus::Undecided);
  EXPECT_EQ(out, "");
  EXPECT_EQ(
      err, "marnockctl: the system does not say who the user at the console is, so the database folder is not known\n");
}

}  // namespace
