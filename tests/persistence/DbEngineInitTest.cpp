// DbEngine::InitDb and CreateTable.
#include <SQLiteCpp/Exception.h>

#include "tests/persistence/EngineTest.h"

namespace {

using support::SystemCall;

class DbEngineInit : public EngineTest {
 protected:
  // Every call up to the search for the file.
  Lines CallsForTheFolder(bool isNew) const {
    const std::string folder = "(" + profile_.File("") + ")";
    Lines calls{"WTSGetActiveConsoleSessionId()",
                "WTSQueryUserToken(1)",
                "ImpersonateLoggedOnUser(token)",
                "GetUserNameSamCompatible(260)",
                "RevertToSelf()",
                "CloseHandle(token)",
                "Exists" + folder};
    if (isNew) {
      calls.insert(calls.end(), {"CreateDirectories" + folder, "Exists" + folder, "AddOwnerAllOthersRead" + folder});
    }
    calls.push_back("GetFileAttributesW(" + profile_.File(kNotesFile) + ")");
    return calls;
  }

  NotesEngine engine_;
};

TEST_F(DbEngineInit, MakesTheFolderAndTheTableAndWritesNothing) {
  EXPECT_TRUE(engine_.InitDb(engine_.content));

  EXPECT_EQ(log_.Lines(), (Lines{"3 [KTData] Creat database success.(KT::DbEngine::CreateTable)",
                                 "3 [KTData] Init database success.(KT::DbEngine::InitDb)"}));
  EXPECT_EQ(system_.Calls(), CallsForTheFolder(true));
  EXPECT_EQ(engine_.content.filePath, profile_.File(kNotesFile));
  EXPECT_EQ(Files(), Lines{});
  EXPECT_EQ(Rows(*engine_.content.dbContentPtr, "SELECT sql FROM sqlite_master WHERE name = 'notes'"),
            Lines{"CREATE TABLE notes(id INTEGER PRIMARY KEY AUTOINCREMENT, sumId TEXT NOT NULL, note TEXT NOT NULL)"});
}

TEST_F(DbEngineInit, SetsThePragmas) {
  ASSERT_TRUE(engine_.InitDb(engine_.content));

  EXPECT_EQ(Rows(*engine_.content.dbContentPtr, "PRAGMA auto_vacuum"), Lines{"0"});
  EXPECT_EQ(Rows(*engine_.content.dbContentPtr, "PRAGMA cache_size"), Lines{"1000"});
}

TEST_F(DbEngineInit, LoadsTheFileThatIsThereAndMakesNoTable) {
  profile_.MakeDatabaseFolder();
  RunOnFile(Native(kNotesFile),
            "CREATE TABLE notes (id INTEGER PRIMARY KEY, sumId, note); INSERT INTO notes VALUES (1, 'a', 'one')");

  EXPECT_TRUE(engine_.InitDb(engine_.content));

  EXPECT_EQ(log_.Lines(), (Lines{"3 [KTData] Load local database success.(KT::DbEngine::LoadDbFromDisk)",
                                 "3 [KTData] Init database success.(KT::DbEngine::InitDb)"}));
  Lines calls = CallsForTheFolder(false);
  calls.push_back("SqliteFileName(" + profile_.File(kNotesFile) + ")");
  EXPECT_EQ(system_.Calls(), calls);
  EXPECT_EQ(engine_.Notes(), Lines{"a|one"});
}

TEST_F(DbEngineInit, LoadsAFileWithoutTheTable) {
  profile_.MakeDatabaseFolder();
  RunOnFile(Native(kNotesFile), "CREATE TABLE other (x)");

  EXPECT_TRUE(engine_.InitDb(engine_.content));
  log_.Take();
  EXPECT_FALSE(engine_.DeleteDbItem("a", engine_.content));
  EXPECT_EQ(log_.Lines(),
            Lines{"4 [KTData] Delete database item filed:no such table: notes(KT::DbEngine::DeleteDbItem)"});
}

TEST_F(DbEngineInit, LoadsAFileOfNoBytesAsADatabaseWithoutTables) {
  profile_.MakeDatabaseFolder();
  support::WriteBytes(Native(kNotesFile), "");

  EXPECT_TRUE(engine_.InitDb(engine_.content));
  EXPECT_EQ(Rows(*engine_.content.dbContentPtr, "SELECT name FROM sqlite_master"), Lines{});
}

TEST_F(DbEngineInit, FailsOnAFileThatIsNoDatabaseAndLeavesItAlone) {
  profile_.MakeDatabaseFolder();
  const std::string garbage(5000, 'x');
  support::WriteBytes(Native(kNotesFile), garbage);

  EXPECT_FALSE(engine_.InitDb(engine_.content));

  EXPECT_EQ(log_.Lines(),
            (Lines{"4 [KTData] Load local database failed:file is not a database(KT::DbEngine::LoadDbFromDisk)",
                   "4 [KTData] Load database failed.(KT::DbEngine::InitDb)"}));
  EXPECT_EQ(support::ReadBytes(Native(kNotesFile)), garbage);
  ASSERT_NE(engine_.content.dbContentPtr, nullptr) << "the open database stays, without a table";
  EXPECT_EQ(Rows(*engine_.content.dbContentPtr, "SELECT name FROM sqlite_master"), Lines{});
}

TEST_F(DbEngineInit, TreatsADirectoryInThePlaceOfTheFileAsAbsent) {
  std::filesystem::create_directories(Native(kNotesFile));

  EXPECT_TRUE(engine_.InitDb(engine_.content));

  EXPECT_EQ(log_.Lines(), (Lines{"3 [KTData] Creat database success.(KT::DbEngine::CreateTable)",
                                 "3 [KTData] Init database success.(KT::DbEngine::InitDb)"}));
}

TEST_F(DbEngineInit, LogsNothingOfItsOwnWhenTheUserIsUnknown) {
  system_.samName.clear();
  system_.Fail(SystemCall::CloseHandle, 1, 6);

  EXPECT_FALSE(engine_.InitDb(engine_.content));

  EXPECT_EQ(log_.Lines(), Lines{"4 [KTData] Get current username failed:6(KT::Utils::GetCurrUserDefinePath)"});
  EXPECT_EQ(engine_.content.dbContentPtr, nullptr);
  EXPECT_EQ(engine_.content.filePath, "");
}

TEST_F(DbEngineInit, LogsNothingOfItsOwnWhenTheFolderIsNotMade) {
  system_.Fail(SystemCall::CreateDirectories, 1);

  EXPECT_FALSE(engine_.InitDb(engine_.content));

  EXPECT_EQ(log_.Lines(), Lines{"4 [KTData] Create directory failed.(KT::Utils::CreateDir)"});
  EXPECT_EQ(engine_.content.dbContentPtr, nullptr);
  EXPECT_EQ(engine_.content.filePath, "");
}

TEST_F(DbEngineInit, LogsTheFileSystemsErrorInTheWayOfTheFolder) {
  for (const SystemCall call : {SystemCall::Exists, SystemCall::CreateDirectories, SystemCall::AddOwnerAllOthersRead}) {
    std::filesystem::remove_all(profile_.NativeRoot());
    system_.Throw(call, 1);
    log_.Take();

    EXPECT_FALSE(engine_.InitDb(engine_.content));

    const Lines lines = log_.Lines();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].find("4 [KTData] Init database filed:filesystem error: made to fail"), 0U) << lines[0];
    EXPECT_NE(lines[0].find("(KT::DbEngine::InitDb)"), std::string::npos) << lines[0];
    EXPECT_EQ(engine_.content.dbContentPtr, nullptr);
  }
}

TEST_F(DbEngineInit, DropsADatabaseThatWasOpenWithWhatItHeld) {
  ASSERT_TRUE(engine_.InitDb(engine_.content));
  engine_.Add("a", "unsaved");
  log_.Take();

  EXPECT_TRUE(engine_.InitDb(engine_.content));

  EXPECT_EQ(log_.Lines(), (Lines{"3 [KTData] dbContentPtr is not nullptr.(KT::DbEngine::InitDb)",
                                 "3 [KTData] Creat database success.(KT::DbEngine::CreateTable)",
                                 "3 [KTData] Init database success.(KT::DbEngine::InitDb)"}));
  EXPECT_EQ(engine_.Notes(), Lines{});
}

TEST_F(DbEngineInit, KeepsTheOpenDatabaseWhenASecondTimeFindsNoFolder) {
  ASSERT_TRUE(engine_.InitDb(engine_.content));
  engine_.Add("a", "unsaved");
  system_.samName.clear();

  EXPECT_FALSE(engine_.InitDb(engine_.content));
  EXPECT_EQ(engine_.Notes(), Lines{"a|unsaved"});
}

TEST_F(DbEngineInit, FailsWhenTheTableCannotBeMade) {
  engine_.columnDefs = "(id INTEGER";

  EXPECT_FALSE(engine_.InitDb(engine_.content));

  EXPECT_EQ(log_.Lines(), (Lines{"4 [KTData] Create device database fail:incomplete input(KT::DbEngine::CreateTable)",
                                 "4 [KTData] Create database failed.(KT::DbEngine::InitDb)"}));
  EXPECT_NE(engine_.content.dbContentPtr, nullptr);
}

TEST_F(DbEngineInit, SeparateEnginesShareNothing) {
  NotesEngine other;
  ASSERT_TRUE(engine_.InitDb(engine_.content));
  ASSERT_TRUE(other.InitDb(other.content));
  engine_.Add("a", "mine");

  EXPECT_EQ(other.Notes(), Lines{});
}

using DbEngineCreateTable = DbEngineInit;

TEST_F(DbEngineCreateTable, NeedsAnOpenDatabase) {
  EXPECT_FALSE(engine_.CreateTable(engine_.content));
  EXPECT_EQ(log_.Lines(), Lines{"4 [KTData] dbContentPtr is nullptr.(KT::DbEngine::CreateTable)"});
}

TEST_F(DbEngineCreateTable, LeavesATableThatIsThere) {
  ASSERT_TRUE(engine_.InitDb(engine_.content));
  engine_.Add("a", "one");
  log_.Take();

  EXPECT_TRUE(engine_.CreateTable(engine_.content));

  EXPECT_EQ(log_.Lines(), Lines{"3 [KTData] Creat database success.(KT::DbEngine::CreateTable)"});
  EXPECT_EQ(engine_.Notes(), Lines{"a|one"});
}

TEST_F(DbEngineCreateTable, PutsNoBlankBetweenTheTableNameAndTheColumns) {
  ASSERT_TRUE(engine_.InitDb(engine_.content));
  engine_.content.tableName = "more";
  engine_.columnDefs = "notes(x);";  // only a name that the column definitions continue is one word

  EXPECT_TRUE(engine_.CreateTable(engine_.content));
  EXPECT_EQ(Rows(*engine_.content.dbContentPtr, "SELECT sql FROM sqlite_master WHERE name = 'morenotes'"),
            Lines{"CREATE TABLE morenotes(x)"});
}

TEST_F(DbEngineCreateTable, LeavesNoTransactionOpenWhenItFails) {
  ASSERT_TRUE(engine_.InitDb(engine_.content));
  engine_.columnDefs = "(";
  engine_.content.tableName = "more";

  EXPECT_FALSE(engine_.CreateTable(engine_.content));
  EXPECT_NO_THROW(engine_.content.dbContentPtr->exec("BEGIN"));
}

}  // namespace
