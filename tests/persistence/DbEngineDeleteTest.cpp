// DbEngine::DeleteDbItem.
#include "tests/persistence/EngineTest.h"

namespace {

class DbEngineDelete : public EngineTest {
 protected:
  DbEngineDelete() {
    EXPECT_TRUE(engine_.InitDb(engine_.content));
    engine_.Add("a", "one");
    engine_.Add("b", "two");
    engine_.Add("a", "three");
    log_.Take();
  }

  bool Delete(const std::string& key) { return engine_.DeleteDbItem(key, engine_.content); }

  const Lines allNotes_{"a|one", "b|two", "a|three"};
  NotesEngine engine_;
};

TEST_F(DbEngineDelete, RemovesEveryRowOfTheKey) {
  EXPECT_TRUE(Delete("a"));
  EXPECT_EQ(engine_.Notes(), Lines{"b|two"});
  EXPECT_EQ(log_.Lines(), Lines{});
}

TEST_F(DbEngineDelete, LogsThatThereWasNoneAndSucceeds) {
  EXPECT_TRUE(Delete("c"));
  EXPECT_EQ(engine_.Notes(), allNotes_);
  EXPECT_EQ(log_.Lines(), Lines{"3 [KTData] Delete item 0(KT::DbEngine::DeleteDbItem)"});
}

TEST_F(DbEngineDelete, ComparesWithSumIdWhateverTheKeyColumn) {
  engine_.content.keyColumn = "note";
  EXPECT_TRUE(Delete("two"));
  EXPECT_TRUE(Delete("b"));
  EXPECT_EQ(engine_.Notes(), (Lines{"a|one", "a|three"}));
}

TEST_F(DbEngineDelete, NeedsAnOpenDatabase) {
  KT::DbContent empty;
  EXPECT_FALSE(engine_.DeleteDbItem("a", empty));
  EXPECT_EQ(log_.Lines(), Lines{"4 [KTData] dbContentPtr is nullptr.(KT::DbEngine::DeleteDbItem)"});
}

TEST_F(DbEngineDelete, FailsOnAKeyWithAQuote) {
  EXPECT_FALSE(Delete("o'brien"));
  EXPECT_EQ(engine_.Notes(), allNotes_);
  EXPECT_EQ(log_.Lines(),
            Lines{"4 [KTData] Delete database item filed:near \"brien\": syntax error(KT::DbEngine::DeleteDbItem)"});
}

TEST_F(DbEngineDelete, PutsTheKeyIntoTheTextAsItStands) {
  EXPECT_TRUE(Delete("x' OR note = 'two"));
  EXPECT_EQ(engine_.Notes(), (Lines{"a|one", "a|three"}));
}

TEST_F(DbEngineDelete, NeverRunsASecondStatement) {
  EXPECT_TRUE(Delete("b'; DROP TABLE notes; --"));
  EXPECT_EQ(engine_.Notes(), (Lines{"a|one", "a|three"}));
}

TEST_F(DbEngineDelete, FailsOnAKeyWithAZeroByte) {
  EXPECT_FALSE(Delete(std::string("a\0b", 3)));
  EXPECT_EQ(engine_.Notes(), allNotes_);
  EXPECT_EQ(log_.Lines(), Lines{"4 [KTData] Delete database item filed:unrecognized token: \"'a\""
                                "(KT::DbEngine::DeleteDbItem)"});
}

TEST_F(DbEngineDelete, TakesKeysOfAnyOtherBytes) {
  const std::string key = "\xff\x80\x01 \"\\%;--/*";
  engine_.Add(key, "odd");
  EXPECT_TRUE(Delete(key));
  EXPECT_EQ(engine_.Notes(), allNotes_);
  EXPECT_TRUE(Delete(""));
}

TEST_F(DbEngineDelete, TakesAMebibyteOfKey) {
  const std::string key(1024 * 1024, 'k');
  engine_.Add(key, "long");
  EXPECT_TRUE(Delete(key));
  EXPECT_EQ(engine_.Notes(), allNotes_);
}

}  // namespace
