// The engine's steps in their order: calls to the system, SQL statements and SQLite's file calls in one sequence.
#include <algorithm>

#include "tests/persistence/EngineTest.h"
#include "tests/support/FaultVfs.h"
#include "tests/support/SqlTrace.h"

namespace {

class StepOrder : public EngineTest {
 protected:
  StepOrder() {
    vfs_.SetListener([this](const std::string& event) {
      // Of the file calls those that show when the copy is made.
      if (event == "open database" || event == "delete journal" || event == "close database") {
        system_.Note(event);
      }
    });
  }

  std::string File(const std::string& call) const { return call + "(" + profile_.File(kNotesFile) + ")"; }

  support::FaultVfs vfs_;
  support::SqlTrace trace_{[this](const std::string& text) { system_.Note("SQL: " + text); }};
  NotesEngine engine_;
};

const Lines kOpeningOfTheMemoryDatabase{"SQL: BEGIN", "SQL: PRAGMA SQLITE_CONFIG_MEMSTATUS = 0",
                                        "SQL: PRAGMA auto_vacuum = 0", "SQL: PRAGMA cache_size = 1000", "SQL: COMMIT"};

Lines operator+(Lines lines, const Lines& more) {
  lines.insert(lines.end(), more.begin(), more.end());
  return lines;
}

TEST_F(StepOrder, OfInitWithoutAFile) {
  profile_.MakeDatabaseFolder();
  ASSERT_TRUE(engine_.InitDb(engine_.content));

  const Lines userAndFolder{
      "WTSGetActiveConsoleSessionId()",   "WTSQueryUserToken(1)", "ImpersonateLoggedOnUser(token)",
      "GetUserNameSamCompatible(260)",    "RevertToSelf()",       "CloseHandle(token)",
      "Exists(" + profile_.File("") + ")"};
  const Lines tableAfterSearch{File("GetFileAttributesW"), "SQL: BEGIN",
                               "SQL: CREATE TABLE IF NOT EXISTS notes(id INTEGER PRIMARY KEY AUTOINCREMENT, "
                               "sumId TEXT NOT NULL, note TEXT NOT NULL);",
                               "SQL: COMMIT"};
  EXPECT_EQ(system_.Calls(), userAndFolder + kOpeningOfTheMemoryDatabase + tableAfterSearch);
}

TEST_F(StepOrder, OfInitWithAFile) {
  ASSERT_TRUE(engine_.InitDb(engine_.content) && engine_.SaveDbIntoDisk(engine_.content));
  engine_.content.dbContentPtr.reset();
  system_.ClearCalls();

  ASSERT_TRUE(engine_.InitDb(engine_.content));

  Lines calls = system_.Calls();
  calls.erase(calls.begin(), std::find(calls.begin(), calls.end(), "SQL: BEGIN"));
  const Lines load{File("GetFileAttributesW"), File("SqliteFileName"), "open database", "close database"};
  EXPECT_EQ(calls, kOpeningOfTheMemoryDatabase + load);
}

TEST_F(StepOrder, OfSave) {
  ASSERT_TRUE(engine_.InitDb(engine_.content) && engine_.SaveDbIntoDisk(engine_.content));
  system_.ClearCalls();

  ASSERT_TRUE(engine_.SaveDbIntoDisk(engine_.content));

  EXPECT_EQ(system_.Calls(),
            (Lines{"SQL: BEGIN", File("GetFileAttributesW"),
                   "MoveFileW(" + profile_.File(kNotesFile) + ", " + profile_.File(kNotesTemporary) + ")",
                   File("SqliteFileName"), "open database", "SQL: PRAGMA journal_mode = TRUNCATE",
                   "SQL: PRAGMA journal_mode = DELETE", "delete journal", "close database", "SQL: COMMIT",
                   "DeleteFileW(" + profile_.File(kNotesTemporary) + ")"}));
}

TEST_F(StepOrder, OfASaveThatFails) {
  ASSERT_TRUE(engine_.InitDb(engine_.content) && engine_.SaveDbIntoDisk(engine_.content));
  system_.ClearCalls();
  vfs_.Fail(support::FileCall::Open, 1, 14);

  ASSERT_FALSE(engine_.SaveDbIntoDisk(engine_.content));

  EXPECT_EQ(system_.Calls(),
            (Lines{"SQL: BEGIN", File("GetFileAttributesW"),
                   "MoveFileW(" + profile_.File(kNotesFile) + ", " + profile_.File(kNotesTemporary) + ")",
                   File("SqliteFileName"), "open database", "SQL: ROLLBACK"}));
}

TEST_F(StepOrder, OfDelete) {
  ASSERT_TRUE(engine_.InitDb(engine_.content));
  system_.ClearCalls();

  ASSERT_TRUE(engine_.DeleteDbItem("a", engine_.content));

  EXPECT_EQ(system_.Calls(), Lines{"SQL: DELETE FROM notes WHERE sumId = 'a';"});
}

}  // namespace
