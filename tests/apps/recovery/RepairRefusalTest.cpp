// When the host must not start, and how long the repair tries before it says so.
#include <SQLiteCpp/Database.h>

#include "platform/OperatingSystem.h"
#include "tests/apps/recovery/RecoveryTest.h"
#include "tests/support/FaultVfs.h"

#include <sqlite3.h>

namespace {

using support::SystemCall;

constexpr int kTries = 10;
const std::vector<long long> kWaits{25, 50, 75, 100, 125, 150, 175, 200, 225};

class RepairRefusal : public RecoveryTest {
 protected:
  void FailTimes(SystemCall call, int times, platform::Dword error) {
    for (int nth = 1; nth <= times; ++nth) {
      system_.Fail(call, nth, error);
    }
  }

  std::string Path(const std::string& name) const { return profile_.File(name); }
};

}  // namespace

TEST_F(RepairRefusal, WaitsForAFileThatCannotBeReadAtFirst) {
  Put(kPeerFile, PeerDatabase("a"));
  FailTimes(SystemCall::ReadSharedFile, kTries - 1, platform::kErrorSharingViolation);
  EXPECT_EQ(Repair(), std::nullopt);
  EXPECT_EQ(sleptMilliseconds_, kWaits);
}

TEST_F(RepairRefusal, ComesWhenAFileCannotBeReadTenTimes) {
  Put(kPeerFile, "damaged");
  FailTimes(SystemCall::ReadSharedFile, kTries, platform::kErrorSharingViolation);
  EXPECT_EQ(Repair(), Path(kPeerFile) +
                          " cannot be read: another program has it open. End the program that holds it, or "
                          "give this one the right to read it, and try again.");
  EXPECT_EQ(sleptMilliseconds_, kWaits);
  EXPECT_EQ(PrintsOf(Content()), PrintsOf({{kPeerFile, "damaged"}}));
  EXPECT_TRUE(told_.empty());
}

TEST_F(RepairRefusal, NamesTheErrorNumberThatIsNotOrdinary) {
  FailTimes(SystemCall::ReadSharedFile, kTries, 1117);
  EXPECT_EQ(Repair().value_or("").find(Path(kPeerFile) + " cannot be read: the system reports error 1117"), 0U);
}

TEST_F(RepairRefusal, ComesForAFolderInPlaceOfAnyOfTheFiles) {
  for (const char* const name : {kPeerFile, kPeerJournal, kPeerTemporary}) {
    std::filesystem::create_directory(Native(name));
    EXPECT_EQ(
        Repair().value_or("").find(Path(name) + " cannot be read: access is denied, or a folder stands in its place"),
        0U);
    std::filesystem::remove(Native(name));
  }
}

TEST_F(RepairRefusal, ComesForAFileThatAnotherProgramWritesTo) {
  Put(kPeerFile, PeerDatabase("a"));
  SQLite::Database other(system_.SqliteFileName(Path(kPeerFile)), SQLite::OPEN_READWRITE);
  other.exec("BEGIN IMMEDIATE");
  EXPECT_EQ(Repair(),
            Path(kPeerFile) + " is locked by another program. End the program that works on it and try again.");
  EXPECT_EQ(sleptMilliseconds_, kWaits);
}

TEST_F(RepairRefusal, ComesForACopyThatAnotherProgramReads) {
  Put(kPeerTemporary, PeerDatabase("a"));
  SQLite::Database other(system_.SqliteFileName(Path(kPeerTemporary)), SQLite::OPEN_READONLY);
  other.exec("BEGIN; SELECT * FROM PEER_DEVICE");
  EXPECT_EQ(Repair(),
            Path(kPeerTemporary) + " is locked by another program. End the program that works on it and try again.");
}

TEST_F(RepairRefusal, DoesNotComeForAConnectionThatDoesNothing) {
  Put(kPeerFile, PeerDatabase("a"));
  SQLite::Database other(system_.SqliteFileName(Path(kPeerFile)), SQLite::OPEN_READWRITE);
  EXPECT_EQ(Repair(), std::nullopt);
}

TEST_F(RepairRefusal, ComesForAFileThatSqliteCannotOpen) {
  Put(kPeerFile, PeerDatabase("a"));
  support::FaultVfs vfs;
  vfs.FailFrom(support::FileCall::Open, 1, SQLITE_CANTOPEN);
  EXPECT_EQ(Repair(), Path(kPeerFile) + " cannot be opened. End the program that works on it and try again.");
}

TEST_F(RepairRefusal, LeavesNoLockBehind) {
  Put(kPeerFile, PeerDatabase("a"));
  ASSERT_EQ(Repair(), std::nullopt);
  SQLite::Database other(system_.SqliteFileName(Path(kPeerFile)), SQLite::OPEN_READWRITE);
  EXPECT_NO_THROW(other.exec("BEGIN EXCLUSIVE"));
}

TEST_F(RepairRefusal, WaitsForAFileThatCannotBeDeletedOrRenamedAtFirst) {
  const std::string old = PeerDatabase("old");
  Put(kPeerFile, "");
  Put(kPeerTemporary, old);
  FailTimes(SystemCall::DeleteFileW, kTries - 1, platform::kErrorSharingViolation);
  FailTimes(SystemCall::MoveFileW, kTries - 1, platform::kErrorAccessDenied);
  EXPECT_EQ(Repair(), std::nullopt);
  EXPECT_EQ(sleptMilliseconds_.size(), 2 * kWaits.size());
  EXPECT_EQ(PrintsOf(Content()), PrintsOf({{kPeerFile, old}}));
}

TEST_F(RepairRefusal, ComesWhenAFileCannotBeDeletedTenTimes) {
  const std::string whole = PeerDatabase("a");
  Put(kPeerFile, whole);
  Put(kPeerJournal, JournalHeader(0));
  FailTimes(SystemCall::DeleteFileW, kTries, platform::kErrorAccessDenied);
  EXPECT_EQ(Repair(), Path(kPeerJournal) +
                          " cannot be deleted: access is denied, or a folder stands in its place. End "
                          "the program that holds it and try again.");
  EXPECT_TRUE(told_.empty());
}

TEST_F(RepairRefusal, ComesWhenAFileCannotBeRenamedTenTimes) {
  Put(kPeerTemporary, PeerDatabase("a"));
  FailTimes(SystemCall::MoveFileW, kTries, platform::kErrorSharingViolation);
  EXPECT_EQ(Repair(),
            Path(kPeerTemporary) +
                " cannot be renamed: another program has it open. End the program that holds it and try again.");
}

TEST_F(RepairRefusal, ComesWhenTheFolderCannotBeSynced) {
  Put(kPeerJournal, "x");
  system_.Fail(SystemCall::SyncDirectory, 1, 1117);
  EXPECT_EQ(Repair(), "changes of names in " + Path("") +
                          " cannot be put on the disk: the system reports error 1117. Check the disk and try again.");
}

TEST_F(RepairRefusal, ComesWhenTheDiskFailsDuringTheRollback) {
  const HotDatabase hot = HalfChangedPeerDatabase();
  Put(kPeerFile, hot.file);
  Put(kPeerJournal, hot.journal);
  {
    support::FaultVfs vfs;
    vfs.FailFrom(support::FileCall::Write, 1, SQLITE_IOERR_WRITE);
    EXPECT_EQ(Repair().value_or("").find(Path(kPeerFile) + " cannot be rolled back: disk I/O error"), 0U);
  }
  EXPECT_TRUE(Content().at(kPeerJournal) == hot.journal);
  EXPECT_EQ(Repair(), std::nullopt);
  EXPECT_EQ(Content().size(), 1U);
}

TEST_F(RepairRefusal, SparesTheFilesThatComeAfterTheOneRefused) {
  Put("TrustedZentapDeviceInfo2G12NJ9DS39D.db", "damaged");
  FailTimes(SystemCall::ReadSharedFile, kTries, platform::kErrorAccessDenied);
  EXPECT_TRUE(Repair().has_value());
  EXPECT_EQ(Content().count("TrustedZentapDeviceInfo2G12NJ9DS39D.db"), 1U);
}
