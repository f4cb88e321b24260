// What the durability of a save rests on in the SQLite that is linked.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include "tests/persistence/EngineTest.h"

namespace {

TEST(SqliteBuild, IsMadeForTheHighestDurability) {
  EXPECT_EQ(sqlite3_compileoption_used("DEFAULT_SYNCHRONOUS=3"), 1);
  const support::ConsoleProfile profile;
  profile.MakeDatabaseFolder();
  EXPECT_EQ(RowsOfFile(profile.NativeFile("any.db"), "PRAGMA synchronous"), Lines{"3"});
}

TEST(SqliteBuild, CountsNoMemory) { EXPECT_EQ(sqlite3_compileoption_used("DEFAULT_MEMSTATUS=0"), 1); }

TEST(SqliteBuild, LoadsNoExtensions) { EXPECT_EQ(sqlite3_compileoption_used("OMIT_LOAD_EXTENSION"), 1); }

TEST(SqliteBuild, KeepsTemporaryTablesInMemory) { EXPECT_EQ(sqlite3_compileoption_used("TEMP_STORE=3"), 1); }

TEST(SqliteBuild, DoesNotTrustTheSchemaOfAFile) {
  SQLite::Database database(":memory:", SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
  EXPECT_EQ(Rows(database, "PRAGMA trusted_schema"), Lines{"0"});
}

TEST(SqliteBuild, TakesDoubleQuotesForNamesOnly) {
  EXPECT_EQ(sqlite3_compileoption_used("DQS=0"), 1);
  SQLite::Database database(":memory:", SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
  EXPECT_ANY_THROW(Rows(database, "SELECT \"text\""));
}

}  // namespace
