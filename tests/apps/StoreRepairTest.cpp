// marnockctl store repair.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <regex>

#include "apps/json/JsonDocument.h"
#include "platform/text/PlenixBase.h"
#include "tests/apps/StoreFixture.h"

namespace {

using KT::ExitStatus;
using support::kCurrentFile;
using support::kPeerFile;
using support::kTrustedFile;
using support::PeerDatabase;
using support::SystemCall;

class StoreRepair : public support::StoreFixture {
 protected:
  // A save of the peers was cut short: FILE is empty, FILE.tmp is whole.
  void CutShort() {
    Put(kPeerFile, "");
    Put(std::string(kPeerFile) + ".tmp", PeerDatabase(2));
  }
  const std::string path_ = Windows(kPeerFile);
};

TEST_F(StoreRepair, HasNothingToDoWhereEverythingIsWhole) {
  Put(kPeerFile, PeerDatabase(1));
  for (const auto& arguments : {std::vector<std::string>{"store", "repair"}, {"store", "repair", "--dry-run"}}) {
    EXPECT_EQ(Tool(arguments), ExitStatus::Done);
    EXPECT_EQ(out, "nothing to repair\n");
    EXPECT_EQ(err, "");
  }
  EXPECT_EQ(Tool({"--json", "store", "repair"}), ExitStatus::Done);
  EXPECT_EQ(out, "{\"dryRun\":false,\"loss\":false,\"actions\":[]}\n");
}

TEST_F(StoreRepair, TellsEachActionOnceItIsDone) {
  CutShort();
  const std::string older = PeerDatabase(2);
  EXPECT_EQ(Tool({"store", "repair"}), ExitStatus::Done);
  EXPECT_EQ(out, "peer store: deleted the unfinished " + path_ + ": the file is not whole, its older copy is\n" +
                     "peer store: restored the file from " + path_ +
                     ".tmp: the file is not whole, its older copy is\n");
  EXPECT_EQ(err, "");
  EXPECT_EQ(Content(), (std::map<std::string, std::string>{{kPeerFile, older}}));
}

TEST_F(StoreRepair, ChangesNothingInADryRun) {
  CutShort();
  const auto before = Content();
  EXPECT_EQ(Tool({"store", "repair", "--dry-run"}), ExitStatus::NeedsRepair);
  EXPECT_EQ(out, "peer store: would delete the unfinished " + path_ + ": the file is not whole, its older copy is\n" +
                     "peer store: would restore the file from " + path_ +
                     ".tmp: the file is not whole, its older copy is\n");
  EXPECT_EQ(err, "");
  EXPECT_EQ(Content(), before);
}

TEST_F(StoreRepair, SaysWhatIsLost) {
  Put(kPeerFile, "rubbish");
  EXPECT_EQ(Tool({"store", "repair", "--dry-run"}), ExitStatus::Lost);
  const std::string reason =
      ": the file is not whole, and there is no whole older copy; what it held is lost to the service\n";
  EXPECT_EQ(out, "peer store: would set aside " + path_ + reason);
  EXPECT_EQ(Tool({"store", "repair"}), ExitStatus::Lost);
  const auto content = Content();
  ASSERT_EQ(content.size(), 1U);
  const auto& [name, bytes] = *content.begin();
  EXPECT_TRUE(std::regex_match(name, std::regex("PeerDeviceInfo1G12NJ9DS39D\\.db\\.bad-[0-9]{8}T[0-9]{6}\\.[0-9]{3}Z")))
      << name;
  EXPECT_EQ(bytes, "rubbish");
  EXPECT_EQ(out, "peer store: set aside " + path_ + " as " + name + reason);
  EXPECT_EQ(Tool({"store", "repair"}), ExitStatus::Done) << "what was lost before is not lost again";
}

TEST_F(StoreRepair, PrintsOneJsonDocument) {
  CutShort();
  Put(kTrustedFile, "rubbish");
  EXPECT_EQ(Tool({"--json", "store", "repair", "--dry-run"}), ExitStatus::Lost);
  const KT::Json seen = KT::ParseJson(out);
  EXPECT_EQ(seen.at("dryRun"), true);
  EXPECT_EQ(seen.at("loss"), true);
  ASSERT_EQ(seen.at("actions").size(), 3U);
  EXPECT_EQ(seen["actions"][0].at("text"),
            "peer store: would delete the unfinished " + path_ + ": the file is not whole, its older copy is");
  EXPECT_EQ(seen["actions"][0].at("loss"), false);
  EXPECT_EQ(seen["actions"][2].at("loss"), true);
}

TEST_F(StoreRepair, RefusesWhileAHostHasTheClaim) {
  CutShort();
  const auto before = Content();
  IPCMessageHub host(pipeName);
  ASSERT_TRUE(host.Claim());
  const std::string why = "marnockctl: a host is running on " + PlenixBase::UnicodeToUTF8(pipeName) +
                          ": it would overwrite what is repaired. Stop it first; at its next start it repairs by "
                          "itself\n";
  EXPECT_EQ(Tool({"store", "repair"}), ExitStatus::Undecided);
  EXPECT_EQ(out, "");
  EXPECT_EQ(err, why);
  EXPECT_EQ(Tool({"--json", "store", "repair", "--dry-run"}), ExitStatus::Undecided);
  EXPECT_EQ(out, "");
  EXPECT_EQ(err, why);
  EXPECT_EQ(Content(), before);
}

TEST_F(StoreRepair, GivesTheClaimBack) {
  EXPECT_EQ(Tool({"store", "repair"}), ExitStatus::Done);
  IPCMessageHub host(pipeName);
  EXPECT_TRUE(host.Claim());
}

TEST_F(StoreRepair, TellsWhatItDidBeforeAFileThatItCannotMend) {
  CutShort();
  std::filesystem::create_directory(profile_.NativeFile(kCurrentFile));
  const std::string why = "marnockctl: " + Windows(kCurrentFile) +
                          " cannot be read: access is denied, or a folder stands in its place. End the program that "
                          "holds it, or give this one the right to read it, and try again.\n";
  EXPECT_EQ(Tool({"--json", "store", "repair", "--dry-run"}), ExitStatus::Undecided);
  EXPECT_EQ(KT::ParseJson(out).at("actions").size(), 2U);
  EXPECT_EQ(err, why);
  EXPECT_EQ(Tool({"store", "repair"}), ExitStatus::Undecided);
  EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 2) << out;
  EXPECT_EQ(err, why);
  EXPECT_EQ(Tool({"store", "repair"}), ExitStatus::Undecided);
  EXPECT_EQ(out, "") << "not that there is nothing to repair";
}

TEST_F(StoreRepair, ComplainsWhenAStepFails) {
  CutShort();
  for (int i = 1; i <= 10; ++i) {
    system_.Fail(SystemCall::DeleteFileW, i, platform::kErrorSharingViolation);
  }
  EXPECT_EQ(Tool({"store", "repair"}), ExitStatus::Undecided);
  EXPECT_EQ(out, "");
  EXPECT_EQ(err, "marnockctl: " + path_ +
                     " cannot be deleted: another program has it open. End the program that holds it and try again.\n");
}

TEST_F(StoreRepair, ComplainsWhenTheUserIsNotKnown) {
  system_.Fail(SystemCall::GetUserNameSamCompatible, 1);
  EXPECT_EQ(Tool({"store", "repair"}), ExitStatus::Undecided);
  EXPECT_EQ(out, "");
  EXPECT_EQ(
      err, "marnockctl: the system does not say who the user at the console is, so the database folder is not known\n");
}

}  // namespace
