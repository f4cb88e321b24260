// DbEngine::SaveDbIntoDisk when the file system does as it should, and the file calls around the copy when not.
#include "tests/persistence/EngineTest.h"

namespace {

using support::SystemCall;

class DbEngineSave : public EngineTest {
 protected:
  DbEngineSave() {
    EXPECT_TRUE(engine_.InitDb(engine_.content));
    engine_.Add("a", "one");
    system_.ClearCalls();
    log_.Take();
  }

  bool Save() { return engine_.SaveDbIntoDisk(engine_.content); }

  std::string Call(const std::string& name) const { return name + "(" + profile_.File(kNotesFile) + ")"; }
  std::string MoveCall() const {
    return "MoveFileW(" + profile_.File(kNotesFile) + ", " + profile_.File(kNotesTemporary) + ")";
  }
  std::string DeleteCall() const { return "DeleteFileW(" + profile_.File(kNotesTemporary) + ")"; }

  // Leaves one saved row on the disk and another, unsaved one in memory.
  void SaveOneAddAnother() {
    ASSERT_TRUE(Save());
    engine_.Add("b", "two");
    system_.ClearCalls();
    log_.Take();
  }

  const Lines success_{"3 [KTData] Save database success.(KT::DbEngine::SaveDbIntoDisk)"};
  NotesEngine engine_;
};

TEST_F(DbEngineSave, WritesTheFileTheFirstTime) {
  EXPECT_TRUE(Save());

  EXPECT_EQ(log_.Lines(), success_);
  EXPECT_EQ(system_.Calls(), (Lines{Call("GetFileAttributesW"), Call("SqliteFileName")}));
  EXPECT_EQ(Files(), Lines{kNotesFile});
  EXPECT_EQ(RowsOfFile(Native(kNotesFile), kAllNotes), Lines{"a|one"});
}

TEST_F(DbEngineSave, MovesTheOldFileAsideAndDeletesItAtTheEnd) {
  SaveOneAddAnother();

  EXPECT_TRUE(Save());

  EXPECT_EQ(log_.Lines(), success_);
  EXPECT_EQ(system_.Calls(), (Lines{Call("GetFileAttributesW"), MoveCall(), Call("SqliteFileName"), DeleteCall()}));
  EXPECT_EQ(Files(), Lines{kNotesFile});
  EXPECT_EQ(RowsOfFile(Native(kNotesFile), kAllNotes), (Lines{"a|one", "b|two"}));
}

TEST_F(DbEngineSave, KeepsTheMemoryDatabaseUsable) {
  ASSERT_TRUE(Save());
  engine_.Add("b", "two");
  EXPECT_EQ(engine_.Notes(), (Lines{"a|one", "b|two"}));
  EXPECT_NO_THROW(engine_.content.dbContentPtr->exec("BEGIN; COMMIT")) << "no transaction is left open";
}

TEST_F(DbEngineSave, SurvivesIntoAnotherEngine) {
  ASSERT_TRUE(Save());
  NotesEngine other;
  ASSERT_TRUE(other.InitDb(other.content));
  EXPECT_EQ(other.Notes(), Lines{"a|one"});
}

TEST_F(DbEngineSave, NeedsAnOpenDatabase) {
  KT::DbContent empty;
  EXPECT_FALSE(engine_.SaveDbIntoDisk(empty));
  EXPECT_EQ(log_.Lines(), Lines{"4 [KTData] dbContentPtr is nullptr.(KT::DbEngine::SaveDbIntoDisk)"});
  EXPECT_EQ(system_.Calls(), Lines{});
}

TEST_F(DbEngineSave, WritesOverTheFileThatCouldNotBeMoved) {
  SaveOneAddAnother();
  system_.Fail(SystemCall::MoveFileW, 1);

  EXPECT_TRUE(Save());

  EXPECT_EQ(log_.Lines(), (Lines{"4 [KTData] Rename database filed.(KT::DbEngine::SaveDbIntoDisk)",
                                 "4 [KTData] Delete database filed.(KT::DbEngine::SaveDbIntoDisk)",
                                 "3 [KTData] Save database success.(KT::DbEngine::SaveDbIntoDisk)"}));
  EXPECT_EQ(system_.Calls(), (Lines{Call("GetFileAttributesW"), MoveCall(), Call("SqliteFileName"), DeleteCall()}));
  EXPECT_EQ(Files(), Lines{kNotesFile});
  EXPECT_EQ(RowsOfFile(Native(kNotesFile), kAllNotes), (Lines{"a|one", "b|two"}));
}

TEST_F(DbEngineSave, WritesOverTheFileBesideAStaleTemporaryOneAndDeletesThat) {
  SaveOneAddAnother();
  support::WriteBytes(Native(kNotesTemporary), "left by a save that was cut short");

  EXPECT_TRUE(Save());

  EXPECT_EQ(log_.Lines(), (Lines{"4 [KTData] Rename database filed.(KT::DbEngine::SaveDbIntoDisk)",
                                 "3 [KTData] Save database success.(KT::DbEngine::SaveDbIntoDisk)"}));
  EXPECT_EQ(Files(), Lines{kNotesFile});
  EXPECT_EQ(RowsOfFile(Native(kNotesFile), kAllNotes), (Lines{"a|one", "b|two"}));
}

TEST_F(DbEngineSave, LeavesAStaleTemporaryFileAloneWhenThereIsNoFile) {
  support::WriteBytes(Native(kNotesTemporary), "left by a save that was cut short");

  EXPECT_TRUE(Save());

  EXPECT_EQ(log_.Lines(), success_);
  EXPECT_EQ(support::ReadBytes(Native(kNotesTemporary)), "left by a save that was cut short");
  EXPECT_EQ(RowsOfFile(Native(kNotesFile), kAllNotes), Lines{"a|one"});
}

TEST_F(DbEngineSave, SucceedsWithATemporaryFileThatCannotBeDeleted) {
  SaveOneAddAnother();
  system_.Fail(SystemCall::DeleteFileW, 1);

  EXPECT_TRUE(Save());

  EXPECT_EQ(log_.Lines(), (Lines{"4 [KTData] Delete database filed.(KT::DbEngine::SaveDbIntoDisk)",
                                 "3 [KTData] Save database success.(KT::DbEngine::SaveDbIntoDisk)"}));
  EXPECT_EQ(Files(), (Lines{kNotesFile, kNotesTemporary}));
  EXPECT_EQ(RowsOfFile(Native(kNotesFile), kAllNotes), (Lines{"a|one", "b|two"}));
  EXPECT_EQ(RowsOfFile(Native(kNotesTemporary), kAllNotes), Lines{"a|one"});
}

TEST_F(DbEngineSave, TakesAFileThatCannotBeSeenForAbsent) {
  SaveOneAddAnother();
  system_.Fail(SystemCall::GetFileAttributesW, 1, platform::kErrorAccessDenied);

  EXPECT_TRUE(Save());

  EXPECT_EQ(system_.Calls(), (Lines{Call("GetFileAttributesW"), Call("SqliteFileName")}));
  EXPECT_EQ(RowsOfFile(Native(kNotesFile), kAllNotes), (Lines{"a|one", "b|two"}));
}

TEST_F(DbEngineSave, FailsOnADirectoryInThePlaceOfTheFile) {
  std::filesystem::create_directories(Native(kNotesFile));

  EXPECT_FALSE(Save());

  EXPECT_EQ(log_.Lines(),
            Lines{"4 [KTData] Save database filed:unable to open database file(KT::DbEngine::SaveDbIntoDisk)"});
  EXPECT_EQ(system_.Calls(), (Lines{Call("GetFileAttributesW"), Call("SqliteFileName")}));
}

TEST_F(DbEngineSave, FailsWhenTheFolderIsGone) {
  std::filesystem::remove_all(profile_.NativeRoot());

  EXPECT_FALSE(Save());
  EXPECT_EQ(log_.Lines(),
            Lines{"4 [KTData] Save database filed:unable to open database file(KT::DbEngine::SaveDbIntoDisk)"});
}

TEST_F(DbEngineSave, ReplacesAFileThatIsNoDatabaseByMovingItAside) {
  support::WriteBytes(Native(kNotesFile), std::string(5000, 'x'));

  EXPECT_TRUE(Save());
  EXPECT_EQ(RowsOfFile(Native(kNotesFile), kAllNotes), Lines{"a|one"});
  EXPECT_EQ(Files(), Lines{kNotesFile});
}

TEST_F(DbEngineSave, FailsOnAFileThatIsNoDatabaseAndCannotBeMoved) {
  const std::string garbage(5000, 'x');
  support::WriteBytes(Native(kNotesFile), garbage);
  system_.Fail(SystemCall::MoveFileW, 1);

  EXPECT_FALSE(Save());

  EXPECT_EQ(log_.Lines(),
            (Lines{"4 [KTData] Rename database filed.(KT::DbEngine::SaveDbIntoDisk)",
                   "4 [KTData] Save database filed:file is not a database(KT::DbEngine::SaveDbIntoDisk)"}));
  EXPECT_EQ(support::ReadBytes(Native(kNotesFile)), garbage);
}

TEST_F(DbEngineSave, FailsInsideATransactionOfSomebodyElse) {
  engine_.content.dbContentPtr->exec("BEGIN");

  EXPECT_FALSE(Save());

  EXPECT_EQ(log_.Lines(), Lines{"4 [KTData] Save database filed:cannot start a transaction within a transaction"
                                "(KT::DbEngine::SaveDbIntoDisk)"});
  EXPECT_EQ(system_.Calls(), Lines{}) << "the transaction comes before any file call";
}

TEST_F(DbEngineSave, ShrinksTheFileWithItsContent) {
  for (int note = 0; note < 500; ++note) {
    engine_.Add("b", std::string(200, 'n'));
  }
  ASSERT_TRUE(Save());
  const auto sizeBefore = std::filesystem::file_size(Native(kNotesFile));
  engine_.content.dbContentPtr->exec("DELETE FROM notes WHERE sumId = 'b'; VACUUM");
  ASSERT_TRUE(Save());

  EXPECT_LT(std::filesystem::file_size(Native(kNotesFile)), sizeBefore);
  EXPECT_EQ(RowsOfFile(Native(kNotesFile), kAllNotes), Lines{"a|one"});
}

}  // namespace
