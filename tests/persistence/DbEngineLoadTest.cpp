// DbEngine::LoadDbFromDisk.
#include "tests/persistence/EngineTest.h"

namespace {

class DbEngineLoad : public EngineTest {
 protected:
  DbEngineLoad() {
    EXPECT_TRUE(engine_.InitDb(engine_.content));
    log_.Take();
    system_.ClearCalls();
  }

  bool Load() { return engine_.LoadDbFromDisk(engine_.content); }

  const Lines success_{"3 [KTData] Load local database success.(KT::DbEngine::LoadDbFromDisk)"};
  NotesEngine engine_;
};

TEST_F(DbEngineLoad, ReplacesWhatIsInMemory) {
  RunOnFile(Native(kNotesFile),
            "CREATE TABLE notes (id INTEGER PRIMARY KEY, sumId, note); INSERT INTO notes VALUES (1, 'a', 'disk')");
  engine_.Add("b", "memory");

  EXPECT_TRUE(Load());

  EXPECT_EQ(log_.Lines(), success_);
  EXPECT_EQ(system_.Calls(), Lines{"SqliteFileName(" + profile_.File(kNotesFile) + ")"});
  EXPECT_EQ(engine_.Notes(), Lines{"a|disk"});
}

TEST_F(DbEngineLoad, NeedsAnOpenDatabase) {
  KT::DbContent empty;
  EXPECT_FALSE(engine_.LoadDbFromDisk(empty));
  EXPECT_EQ(log_.Lines(), Lines{"4 [KTData] dbContentPtr is nullptr.(KT::DbEngine::LoadDbFromDisk)"});
}

TEST_F(DbEngineLoad, FailsOnGarbageAndKeepsWhatIsInMemory) {
  engine_.Add("b", "memory");
  for (const std::size_t size : {std::size_t{5}, std::size_t{100}, std::size_t{5000}}) {
    support::WriteBytes(Native(kNotesFile), std::string(size, 'x'));
    log_.Take();

    EXPECT_FALSE(Load());

    EXPECT_EQ(log_.Lines(),
              Lines{"4 [KTData] Load local database failed:file is not a database(KT::DbEngine::LoadDbFromDisk)"});
    EXPECT_EQ(engine_.Notes(), Lines{"b|memory"});
  }
}

TEST_F(DbEngineLoad, FailsOnAFileThatIsCutShort) {
  engine_.Add("a", std::string(20'000, 'n'));
  ASSERT_TRUE(engine_.SaveDbIntoDisk(engine_.content));
  std::filesystem::resize_file(Native(kNotesFile), 8192);
  log_.Take();

  EXPECT_FALSE(Load());
  EXPECT_EQ(log_.Lines(), Lines{"4 [KTData] Load local database failed:database disk image is malformed"
                                "(KT::DbEngine::LoadDbFromDisk)"});
}

TEST_F(DbEngineLoad, FailsOnADirectory) {
  std::filesystem::create_directories(Native(kNotesFile));

  EXPECT_FALSE(Load());
  EXPECT_EQ(log_.Lines(), Lines{"4 [KTData] Load local database failed:unable to open database file"
                                "(KT::DbEngine::LoadDbFromDisk)"});
}

TEST_F(DbEngineLoad, MakesAnEmptyFileWhereThereIsNone) {
  EXPECT_TRUE(Load());
  EXPECT_EQ(log_.Lines(), success_);
  EXPECT_TRUE(std::filesystem::exists(Native(kNotesFile)));
  EXPECT_EQ(Rows(*engine_.content.dbContentPtr, "SELECT name FROM sqlite_master"), Lines{});
}

TEST_F(DbEngineLoad, TakesFilesOfOtherPageSizesIntoAFreshDatabase) {
  RunOnFile(Native(kNotesFile),
            "PRAGMA page_size = 1024; CREATE TABLE notes (id INTEGER PRIMARY KEY, sumId, note); "
            "INSERT INTO notes VALUES (1, 'a', 'disk')");

  EXPECT_TRUE(engine_.InitDb(engine_.content));
  EXPECT_EQ(engine_.Notes(), Lines{"a|disk"});
}

TEST_F(DbEngineLoad, TakesFilesInWalModeAndUtf16) {
  RunOnFile(Native(kNotesFile),
            "PRAGMA encoding = 'UTF-16le'; PRAGMA journal_mode = WAL; "
            "CREATE TABLE notes (id INTEGER PRIMARY KEY, sumId, note); INSERT INTO notes VALUES (1, 'a', 'n\u00f6te')");

  EXPECT_TRUE(engine_.InitDb(engine_.content));
  EXPECT_EQ(engine_.Notes(), Lines{"a|n\u00f6te"});
  EXPECT_TRUE(engine_.SaveDbIntoDisk(engine_.content));
  EXPECT_EQ(RowsOfFile(Native(kNotesFile), kAllNotes), Lines{"a|n\u00f6te"});
}

}  // namespace
