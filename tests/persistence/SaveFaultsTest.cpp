// Saves and loads in which one of SQLite's file calls fails, for every call that they make.
#include <sqlite3.h>

#include "tests/persistence/EngineTest.h"
#include "tests/support/FaultVfs.h"

namespace {

using support::FaultVfs;
using support::FileCall;

struct FaultKind {
  const char* name;
  FileCall call;
  int result;
  const char* text;  // what SQLite says of it
};

constexpr FaultKind kKinds[] = {
    {"Open", FileCall::Open, SQLITE_CANTOPEN, "unable to open database file"},
    {"Read", FileCall::Read, SQLITE_IOERR_READ, "disk I/O error"},
    {"Write", FileCall::Write, SQLITE_IOERR_WRITE, "disk I/O error"},
    {"DiskFull", FileCall::Write, SQLITE_FULL, "database or disk is full"},
    {"Truncate", FileCall::Truncate, SQLITE_IOERR_TRUNCATE, "disk I/O error"},
    {"Sync", FileCall::Sync, SQLITE_IOERR_FSYNC, "disk I/O error"},
    {"FileSize", FileCall::FileSize, SQLITE_IOERR_FSTAT, "disk I/O error"},
    {"Lock", FileCall::Lock, SQLITE_IOERR_LOCK, "disk I/O error"},
    {"Unlock", FileCall::Unlock, SQLITE_IOERR_UNLOCK, "disk I/O error"},
    {"Delete", FileCall::Delete, SQLITE_IOERR_DELETE, "disk I/O error"},
    {"Access", FileCall::Access, SQLITE_IOERR_ACCESS, "disk I/O error"},
    {"Close", FileCall::Close, SQLITE_IOERR_CLOSE, "disk I/O error"},
};

// How often the healthy operation makes each call is what bounds the search; these make none, or survive every failure.
bool MayPass(const FaultKind& kind) {
  return kind.call == FileCall::Unlock || kind.call == FileCall::Close || kind.call == FileCall::Delete;
}

// Sizes in place of the texts: one of them is long.
constexpr const char* kNoteSizes = "SELECT sumId, length(note) FROM notes ORDER BY id";
const Lines kOldContent{"a|3"};
const Lines kNewContent{"a|3", "b|30000"};

class Faults : public EngineTest, public testing::WithParamInterface<FaultKind> {
 protected:
  Faults() { EXPECT_TRUE(engine_.InitDb(engine_.content)); }

  // One saved row on the disk, enough unsaved ones in memory for several pages; nothing else in the folder.
  void Prepare() {
    vfs_.Heal();
    std::filesystem::remove_all(Native(""));
    profile_.MakeDatabaseFolder();
    engine_.content.dbContentPtr->exec("DELETE FROM notes");
    engine_.Add("a", "old");
    ASSERT_TRUE(engine_.SaveDbIntoDisk(engine_.content));
    engine_.Add("b", std::string(30'000, 'n'));
    vfs_.ResetCounts();
    log_.Take();
  }

  int CallsOfAHealthySave() {
    Prepare();
    EXPECT_TRUE(engine_.SaveDbIntoDisk(engine_.content));
    return vfs_.Count(GetParam().call);
  }

  Lines MemoryRows() { return Rows(*engine_.content.dbContentPtr, kNoteSizes); }

  // Rows of a file that is to be whole.
  Lines WholeRows(const char* name) {
    vfs_.Heal();
    EXPECT_EQ(RowsOfFile(Native(name), "PRAGMA integrity_check"), Lines{"ok"});
    return RowsOfFile(Native(name), kNoteSizes);
  }

  std::string Failure(const std::string& message, const std::string& function) const {
    return "4 [KTData] " + message + GetParam().text + "(KT::DbEngine::" + function + ")";
  }

  void CheckFailedSave() {
    EXPECT_EQ(log_.Lines(), Lines{Failure("Save database filed:", "SaveDbIntoDisk")});
    EXPECT_EQ(WholeRows(kNotesTemporary), kOldContent);
    EXPECT_EQ(MemoryRows(), kNewContent);
    EXPECT_TRUE(engine_.SaveDbIntoDisk(engine_.content)) << "the next save works again";
    EXPECT_EQ(WholeRows(kNotesFile), kNewContent);
  }

  void CheckSuccessfulSave() {
    EXPECT_EQ(log_.Lines(), Lines{"3 [KTData] Save database success.(KT::DbEngine::SaveDbIntoDisk)"});
    EXPECT_FALSE(std::filesystem::exists(Native(kNotesTemporary)));
    EXPECT_EQ(WholeRows(kNotesFile), kNewContent);
  }

  // Makes each call of the kind fail in turn. Returns how many of the saves failed.
  int SaveWithEachFault(void (FaultVfs::*fail)(FileCall, int, int)) {
    const int calls = CallsOfAHealthySave();
    int failures = 0;
    for (int nth = 1; nth <= calls; ++nth) {
      SCOPED_TRACE(nth);
      Prepare();
      (vfs_.*fail)(GetParam().call, nth, GetParam().result);
      const bool isSaved = engine_.SaveDbIntoDisk(engine_.content);
      isSaved ? CheckSuccessfulSave() : CheckFailedSave();
      failures += isSaved ? 0 : 1;
    }
    return failures;
  }

  FaultVfs vfs_;
  NotesEngine engine_;
};

TEST_P(Faults, ASaveIsOnTheDiskOrFailsAndKeepsTheOldFile) {
  const int failures = SaveWithEachFault(&FaultVfs::Fail);
  EXPECT_TRUE(failures > 0 || MayPass(GetParam()));
}

TEST_P(Faults, ASaveIsOnTheDiskOrFailsAndKeepsTheOldFileWhenTheFaultStays) {
  const int failures = SaveWithEachFault(&FaultVfs::FailFrom);
  EXPECT_TRUE(failures > 0 || MayPass(GetParam()));
}

TEST_P(Faults, AFirstSaveIsOnTheDiskOrFails) {
  const int calls = CallsOfAHealthySave();
  for (int nth = 1; nth <= calls; ++nth) {
    SCOPED_TRACE(nth);
    Prepare();
    std::filesystem::remove(Native(kNotesFile));
    vfs_.Fail(GetParam().call, nth, GetParam().result);
    if (engine_.SaveDbIntoDisk(engine_.content)) {
      CheckSuccessfulSave();
    } else {
      EXPECT_EQ(log_.Lines(), Lines{Failure("Save database filed:", "SaveDbIntoDisk")});
      EXPECT_FALSE(std::filesystem::exists(Native(kNotesTemporary)));
    }
  }
}

TEST_P(Faults, ASaveOverAFileThatCannotBeMovedLeavesTheOldContentOrTheNew) {
  const int calls = CallsOfAHealthySave();
  for (int nth = 1; nth <= calls; ++nth) {
    SCOPED_TRACE(nth);
    Prepare();
    system_.Fail(support::SystemCall::MoveFileW, 1);
    vfs_.Fail(GetParam().call, nth, GetParam().result);
    const bool isSaved = engine_.SaveDbIntoDisk(engine_.content);
    const Lines content = WholeRows(kNotesFile);
    // A fault after the last byte was written fails a save that is on the disk.
    EXPECT_TRUE(content == kNewContent || (!isSaved && content == kOldContent)) << testing::PrintToString(content);
  }
}

TEST_P(Faults, ALoadIsWholeOrFailsAndLeavesTheFileAlone) {
  Prepare();
  ASSERT_TRUE(engine_.SaveDbIntoDisk(engine_.content));
  vfs_.ResetCounts();
  ASSERT_TRUE(engine_.InitDb(engine_.content));
  const int calls = vfs_.Count(GetParam().call);
  for (int nth = 1; nth <= calls; ++nth) {
    SCOPED_TRACE(nth);
    vfs_.ResetCounts();
    log_.Take();
    vfs_.Fail(GetParam().call, nth, GetParam().result);
    if (engine_.InitDb(engine_.content)) {
      EXPECT_EQ(MemoryRows(), kNewContent);
    } else {
      EXPECT_EQ(log_.Lines(), (Lines{"3 [KTData] dbContentPtr is not nullptr.(KT::DbEngine::InitDb)",
                                     Failure("Load local database failed:", "LoadDbFromDisk"),
                                     "4 [KTData] Load database failed.(KT::DbEngine::InitDb)"}));
    }
    EXPECT_EQ(WholeRows(kNotesFile), kNewContent);
  }
}

INSTANTIATE_TEST_SUITE_P(EveryKind, Faults, testing::ValuesIn(kKinds),
                         [](const auto& kind) { return kind.param.name; });

}  // namespace
