// What the repair makes of each state that a save which was cut short can leave, and of damaged files.
#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Statement.h>

#include "apps/recovery/DatabaseImage.h"
#include "tests/apps/recovery/RecoveryTest.h"

namespace {

using Files = std::map<std::string, std::string>;

const std::string kBadFile = std::string(kPeerFile) + kBadSuffix;
const std::string kBadTemporary = std::string(kPeerTemporary) + kBadSuffix;
const std::string kGarbage = "This was a database once.";

std::string SumIdIn(const std::string& bytes) {
  KT::DatabaseImage image(bytes);
  SQLite::Statement select(image.Get(), "SELECT sumId FROM PEER_DEVICE");
  return select.executeStep() ? select.getColumn(0).getString() : "no row";
}

// A database of which the last page never came.
std::string Unfinished(const std::string& sumId) {
  const std::string bytes = PeerDatabase(sumId);
  return bytes.substr(0, bytes.size() - 4096);
}

class RepairRules : public RecoveryTest {
 protected:
  void PutAll(const Files& files) {
    for (const auto& [name, bytes] : files) {
      Put(name, bytes);
    }
  }

  // Repairs, and expects that it can, and that the folder then holds exactly `after`.
  void ExpectAfterRepair(const Files& after, bool anyLoss = false) {
    EXPECT_EQ(Repair(), std::nullopt);
    EXPECT_EQ(PrintsOf(Content()), PrintsOf(after));
    EXPECT_EQ(anyLoss_, anyLoss);
  }

  std::string Path(const std::string& name) const { return profile_.File(name); }
};

}  // namespace

TEST_F(RepairRules, LeaveAnEmptyFolderAlone) {
  ExpectAfterRepair({});
  EXPECT_TRUE(told_.empty());
}

TEST_F(RepairRules, LeaveAFolderThatIsNotThereAlone) {
  std::filesystem::remove(Native(""));
  EXPECT_EQ(Repair(), std::nullopt);
  EXPECT_FALSE(std::filesystem::exists(Native("")));
}

TEST_F(RepairRules, LeaveAWholeFileAlone) {
  const std::string whole = PeerDatabase("a");
  PutAll({{kPeerFile, whole}});
  system_.ClearCalls();
  ExpectAfterRepair({{kPeerFile, whole}});
  EXPECT_TRUE(told_.empty());
  for (const std::string& call : system_.Calls()) {
    EXPECT_TRUE(call.starts_with("ReadSharedFile(") || call.starts_with("GetLastError(") ||
                call.starts_with("SqliteFileName("))
        << call;
  }
}

TEST_F(RepairRules, KeepAWholeFileBesideAFreshJournal) {
  const std::string whole = PeerDatabase("new");
  PutAll({{kPeerFile, whole}, {kPeerJournal, JournalHeader(0)}, {kPeerTemporary, PeerDatabase("old")}});
  ExpectAfterRepair({{kPeerFile, whole}});
  EXPECT_EQ(told_, (Lines{"peer store: deleted " + Path(kPeerJournal) +
                              ": the file is whole beside the journal of an unfinished save",
                          "peer store: deleted the older copy " + Path(kPeerTemporary) +
                              ": the file is whole beside the journal of an unfinished save"}));
}

TEST_F(RepairRules, RestoreTheOlderCopyOfAnUnfinishedFileBesideAFreshJournal) {
  const std::string old = PeerDatabase("old");
  PutAll({{kPeerFile, Unfinished("new")}, {kPeerJournal, JournalHeader(0)}, {kPeerTemporary, old}});
  ExpectAfterRepair({{kPeerFile, old}});
  const std::string why = ": the file is not whole, its older copy is";
  EXPECT_EQ(told_, (Lines{"peer store: deleted the unfinished " + Path(kPeerFile) + why,
                          "peer store: deleted " + Path(kPeerJournal) + why,
                          "peer store: restored the file from " + Path(kPeerTemporary) + why}));
}

TEST_F(RepairRules, LetSqliteRollBackAHotJournal) {
  const HotDatabase hot = HalfChangedPeerDatabase();
  PutAll({{kPeerFile, hot.file}, {kPeerJournal, hot.journal}, {kPeerTemporary, PeerDatabase("older")}});
  EXPECT_EQ(SumIdIn(hot.file), "half");
  EXPECT_EQ(Repair(), std::nullopt);
  const Files after = Content();
  ASSERT_EQ(after.size(), 1U);
  EXPECT_EQ(SumIdIn(after.at(kPeerFile)), "old");
  EXPECT_EQ(told_, (Lines{"peer store: let SQLite roll back " + Path(kPeerFile) + ": the file is whole",
                          "peer store: deleted the older copy " + Path(kPeerTemporary) + ": the file is whole"}));
}

TEST_F(RepairRules, DeleteAJournalThatSqliteHasNoUseFor) {
  const std::string whole = PeerDatabase("a");
  for (const std::string& journal : {std::string(), std::string(512, '\0'), kGarbage, JournalHeader(0).substr(0, 27)}) {
    PutAll({{kPeerFile, whole}, {kPeerJournal, journal}});
    ExpectAfterRepair({{kPeerFile, whole}});
  }
}

TEST_F(RepairRules, DeleteAnOlderCopyBesideAWholeFileWhateverItHolds) {
  const std::string whole = PeerDatabase("new");
  for (const std::string& temporary : {PeerDatabase("old"), kGarbage, std::string()}) {
    PutAll({{kPeerFile, whole}, {kPeerTemporary, temporary}});
    ExpectAfterRepair({{kPeerFile, whole}});
  }
}

TEST_F(RepairRules, RestoreTheOlderCopyOfAnEmptyFile) {
  const std::string old = PeerDatabase("old");
  PutAll({{kPeerFile, ""}, {kPeerTemporary, old}});
  ExpectAfterRepair({{kPeerFile, old}});
}

TEST_F(RepairRules, RestoreTheOlderCopyOfADamagedFileAndSetThatAside) {
  const std::string old = PeerDatabase("old");
  PutAll({{kPeerFile, kGarbage}, {kPeerTemporary, old}});
  ExpectAfterRepair({{kPeerFile, old}, {kBadFile, kGarbage}});
}

TEST_F(RepairRules, RestoreTheOlderCopyOfAFileThatNoJournalCanMend) {
  const std::string old = PeerDatabase("old");
  PutAll({{kPeerFile, kGarbage}, {kPeerJournal, kGarbage}, {kPeerTemporary, old}});
  ExpectAfterRepair({{kPeerFile, old}, {kBadFile, kGarbage}});
}

TEST_F(RepairRules, SetADamagedFileAsideWhenThereIsNoCopy) {
  PutAll({{kPeerFile, kGarbage}, {kPeerJournal, kGarbage}});
  ExpectAfterRepair({{kBadFile, kGarbage}}, true);
  ASSERT_FALSE(told_.empty());
  EXPECT_EQ(told_[1], "LOSS peer store: set aside " + Path(kPeerFile) + " as " + kBadFile +
                          ": the file is not whole, and there is no whole older copy; what it held is lost to the "
                          "service");
}

TEST_F(RepairRules, SetAnEmptyFileAsideWhenThereIsNoCopy) {
  PutAll({{kPeerFile, ""}});
  ExpectAfterRepair({{kBadFile, ""}});  // no loss: the first save ever leaves it so when it is cut short
}

TEST_F(RepairRules, SetAWholeDatabaseWithoutTheTableAside) {
  KT::MemoryFiles files;
  SQLite::Database("other", SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE, 0, files.VfsName().c_str())
      .exec("CREATE TABLE other(a)");
  PutAll({{kPeerFile, files.files.at("other")}});
  ExpectAfterRepair({{kBadFile, files.files.at("other")}}, true);
}

TEST_F(RepairRules, SetADamagedFileAndItsDamagedCopyAside) {
  PutAll({{kPeerFile, kGarbage}, {kPeerTemporary, "also garbage"}});
  ExpectAfterRepair({{kBadFile, kGarbage}, {kBadTemporary, "also garbage"}}, true);
}

TEST_F(RepairRules, LoseNothingWithAFirstSaveThatWasCutShort) {
  PutAll({{kPeerFile, Unfinished("first")}, {kPeerJournal, JournalHeader(0)}});
  ExpectAfterRepair({{kBadFile, Unfinished("first")}});
  for (const std::string& line : told_) {
    EXPECT_FALSE(line.starts_with("LOSS")) << line;
  }
}

TEST_F(RepairRules, RestoreTheCopyOfAnAbsentFile) {
  const std::string old = PeerDatabase("old");
  PutAll({{kPeerJournal, JournalHeader(0)}, {kPeerTemporary, old}});
  ExpectAfterRepair({{kPeerFile, old}});
}

TEST_F(RepairRules, DeleteTheJournalOfAnAbsentFile) {
  PutAll({{kPeerJournal, JournalHeader(3)}});
  ExpectAfterRepair({});
}

TEST_F(RepairRules, SetTheDamagedCopyOfAnAbsentFileAside) {
  PutAll({{kPeerTemporary, kGarbage}});
  ExpectAfterRepair({{kBadTemporary, kGarbage}}, true);
}

TEST_F(RepairRules, ReplaceNothingThatWasSetAsideBefore) {
  PutAll({{kBadFile, "first"}, {kBadFile + "-2", "second"}, {kPeerFile, kGarbage}});
  ExpectAfterRepair({{kBadFile, "first"}, {kBadFile + "-2", "second"}, {kBadFile + "-3", kGarbage}}, true);
}

TEST_F(RepairRules, HoldForEachOfTheThreeFiles) {
  PutAll({{"PeerDeviceInfo1G12NJ9DS39D.db", kGarbage},
          {"CurrentZentapDeviceInfo1G12NJ9DS39D.db", kGarbage},
          {"TrustedZentapDeviceInfo2G12NJ9DS39D.db", kGarbage},
          {"G12NJ9DS39D.db", kGarbage}});
  ExpectAfterRepair({{kBadFile, kGarbage},
                     {std::string("CurrentZentapDeviceInfo1G12NJ9DS39D.db") + kBadSuffix, kGarbage},
                     {std::string("TrustedZentapDeviceInfo2G12NJ9DS39D.db") + kBadSuffix, kGarbage},
                     {"G12NJ9DS39D.db", kGarbage}},
                    true);
}

TEST_F(RepairRules, SyncTheFolderAfterEveryAction) {
  PutAll({{kPeerFile, ""}, {kPeerJournal, JournalHeader(0)}, {kPeerTemporary, PeerDatabase("old")}});
  ASSERT_EQ(Repair(), std::nullopt);
  Lines changes;
  for (const std::string& call : system_.Calls()) {
    if (call.starts_with("MoveFileW") || call.starts_with("DeleteFileW") || call.starts_with("SyncDirectory")) {
      changes.push_back(call);
    }
  }
  const std::string sync = "SyncDirectory(" + profile_.File("") + ")";
  EXPECT_EQ(changes, (Lines{"DeleteFileW(" + Path(kPeerFile) + ")", sync, "DeleteFileW(" + Path(kPeerJournal) + ")",
                            sync, "MoveFileW(" + Path(kPeerTemporary) + ", " + Path(kPeerFile) + ")", sync}));
}
