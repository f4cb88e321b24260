// Copies that another connection's lock is in the way of.
#include "persistence/DatabaseCopy.h"

#include <SQLiteCpp/Exception.h>

#include <chrono>
#include <functional>
#include <thread>

#include "tests/persistence/EngineTest.h"

namespace {

using namespace std::chrono_literals;

class DatabaseCopy : public EngineTest {
 protected:
  DatabaseCopy() {
    profile_.MakeDatabaseFolder();
    memory_.exec("CREATE TABLE notes (id INTEGER PRIMARY KEY, sumId, note); INSERT INTO notes VALUES (1, 'a', 'new')");
    RunOnFile(Native(kNotesFile),
              "CREATE TABLE notes (id INTEGER PRIMARY KEY, sumId, note); INSERT INTO notes VALUES (1, 'a', 'old')");
  }

  void Save() { KT::SaveToFile(memory_, profile_.File(kNotesFile)); }
  void Load() { KT::LoadFromFile(memory_, profile_.File(kNotesFile)); }

  static std::string TextOfFailure(const std::function<void()>& copy) {
    try {
      copy();
    } catch (const SQLite::Exception& exception) {
      return exception.what();
    }
    return "no exception";
  }

  SQLite::Database memory_{":memory:", SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE};
};

TEST_F(DatabaseCopy, SaveFailsOnAFileThatSomebodyIsWriting) {
  for (const char* const lock : {"BEGIN IMMEDIATE", "BEGIN EXCLUSIVE"}) {
    SQLite::Database other = OpenNative(Native(kNotesFile));
    other.exec(lock);
    EXPECT_EQ(TextOfFailure([&] { Save(); }), "database is locked") << lock;
    EXPECT_EQ(Rows(other, kAllNotes), Lines{"a|old"}) << lock;
  }
}

TEST_F(DatabaseCopy, SaveFailsOnAFileThatSomebodyIsReading) {
  SQLite::Database other = OpenNative(Native(kNotesFile));
  other.exec("BEGIN");
  ASSERT_EQ(Rows(other, kAllNotes), Lines{"a|old"});

  EXPECT_EQ(TextOfFailure([&] { Save(); }), "database is locked");
  EXPECT_EQ(Rows(other, kAllNotes), Lines{"a|old"});
}

TEST_F(DatabaseCopy, LoadFailsOnAFileThatSomebodyHoldsAlone) {
  SQLite::Database other = OpenNative(Native(kNotesFile));
  other.exec("BEGIN EXCLUSIVE");

  EXPECT_EQ(TextOfFailure([&] { Load(); }), "database is locked");
  EXPECT_EQ(Rows(memory_, kAllNotes), Lines{"a|new"});
}

TEST_F(DatabaseCopy, WaitsForALockAsLongAsItSays) {
  SQLite::Database other = OpenNative(Native(kNotesFile));
  other.exec("BEGIN EXCLUSIVE");
  const auto start = std::chrono::steady_clock::now();

  EXPECT_EQ(TextOfFailure([&] { Save(); }), "database is locked");

  const auto waited = std::chrono::steady_clock::now() - start;
  EXPECT_EQ(KT::kFileBusyTimeoutMilliseconds, 500);
  EXPECT_GE(waited, 400ms);
}

TEST_F(DatabaseCopy, SavesWhenTheLockGoesInTime) {
  SQLite::Database other = OpenNative(Native(kNotesFile));
  other.exec("BEGIN EXCLUSIVE");
  std::thread release([&] {
    std::this_thread::sleep_for(100ms);
    other.exec("ROLLBACK");
  });

  EXPECT_EQ(TextOfFailure([&] { Save(); }), "no exception");

  release.join();
  EXPECT_EQ(RowsOfFile(Native(kNotesFile), kAllNotes), Lines{"a|new"});
}

TEST_F(DatabaseCopy, SaveFailsWhileTheMemoryDatabaseIsBeingWritten) {
  memory_.exec("BEGIN; INSERT INTO notes VALUES (2, 'b', 'uncommitted')");

  EXPECT_EQ(TextOfFailure([&] { Save(); }), "database is locked");
  EXPECT_EQ(RowsOfFile(Native(kNotesFile), kAllNotes), Lines{"a|old"});
}

TEST_F(DatabaseCopy, LoadFailsWhileTheMemoryDatabaseIsBeingWritten) {
  memory_.exec("BEGIN; INSERT INTO notes VALUES (2, 'b', 'uncommitted')");

  EXPECT_EQ(TextOfFailure([&] { Load(); }), "destination database is in use");
  EXPECT_EQ(Rows(memory_, kAllNotes), (Lines{"a|new", "b|uncommitted"}));
}

TEST_F(DatabaseCopy, AnEngineReportsALockedFile) {
  NotesEngine engine;
  ASSERT_TRUE(engine.InitDb(engine.content));
  system_.Fail(support::SystemCall::MoveFileW, 1);  // as on Windows, where an open file cannot be moved
  SQLite::Database other = OpenNative(Native(kNotesFile));
  other.exec("BEGIN EXCLUSIVE");
  log_.Take();

  EXPECT_FALSE(engine.SaveDbIntoDisk(engine.content));
  EXPECT_FALSE(engine.LoadDbFromDisk(engine.content));

  EXPECT_EQ(log_.Lines(),
            (Lines{"4 [KTData] Rename database filed.(KT::DbEngine::SaveDbIntoDisk)",
                   "4 [KTData] Save database filed:database is locked(KT::DbEngine::SaveDbIntoDisk)",
                   "4 [KTData] Load local database failed:database is locked(KT::DbEngine::LoadDbFromDisk)"}));
  EXPECT_EQ(engine.Notes(), Lines{"a|old"});
}

}  // namespace
