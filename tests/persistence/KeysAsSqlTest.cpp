// What a key can do that closes its quotes and goes on in SQL: by contract it becomes part of the statement as it
// stands. These tests are what docs/security.md promises about that, and what it admits.
#include <SQLiteCpp/Statement.h>
#include <sqlite3.h>

#include <filesystem>

#include "persistence/KeyedStatement.h"
#include "persistence/PeerDeviceDbEngine.h"
#include "persistence/TrustedZentapDbEngine.h"
#include "platform/ThreadProcessorTime.h"
#include "tests/persistence/EngineTest.h"
#include "tests/support/FaultVfs.h"

namespace {

using std::chrono::milliseconds;

constexpr const char* kAllPeers = "SELECT udId, sumId FROM PEER_DEVICE ORDER BY id";

// What an operation on a key that is more than a key comes to.
struct Outcome {
  bool succeeded = false;
  std::string value;    // a query's, "untouched" when it set none
  std::string failure;  // SQLite's text in the log line, without the rest of it
};

class KeysAsSql : public EngineTest {
 protected:
  KeysAsSql() {
    peers_.AddPeerDevice("a", "1");
    peers_.AddPeerDevice("b", "2");
    peers_.AddPeerDevice("c", "3");
    log_.Take();
  }

  Outcome Query(const std::string& udId) {
    Outcome outcome;
    outcome.value = "untouched";
    outcome.succeeded = peers_.QueryPeerDevice(udId, outcome.value);
    outcome.failure = Failure("4 [KTData] Get peer device failed:", "(KT::PeerDeviceDbEngine::QueryPeerDevice)");
    return outcome;
  }

  Outcome Delete(const std::string& udId) {
    Outcome outcome;
    outcome.succeeded = peers_.DeletePeerDevice(udId);
    outcome.failure = Failure("4 [KTData] Delete database item filed:", "(KT::PeerDeviceDbEngine::DeletePeerDevice)");
    return outcome;
  }

  Lines Peers() { return Rows(*peers_.Content().dbContentPtr, kAllPeers); }

  // The text between the two in the last line, which is then the only failure.
  std::string Failure(const std::string& before, const std::string& after) {
    for (const std::string& line : log_.Take()) {
      if (line.starts_with(before) && line.ends_with(after)) {
        return line.substr(before.size(), line.size() - before.size() - after.size());
      }
    }
    return {};
  }

  void ExpectAllPeers() { EXPECT_EQ(Peers(), (Lines{"a|1", "b|2", "c|3"})); }

  KT::PeerDeviceDbEngine peers_;
};

// What is possible.

TEST_F(KeysAsSql, ADeleteCanTakeEveryRowOfItsTable) {
  EXPECT_TRUE(Delete("x' OR '1'='1").succeeded);
  EXPECT_EQ(Peers(), Lines());
}

TEST_F(KeysAsSql, ADeleteCanTakeRowsByTheirValues) {
  EXPECT_TRUE(Delete("x' OR sumId='2' --").succeeded);
  EXPECT_EQ(Peers(), (Lines{"a|1", "c|3"}));
}

TEST_F(KeysAsSql, AQueryCanReadAnyRowOfItsTable) {
  EXPECT_EQ(Query("x' OR '1'='1").value, "3") << "the last row wins";
  EXPECT_EQ(Query("x' OR sumId>'1' ORDER BY id DESC --").value, "2");
  EXPECT_EQ(Query("x' UNION SELECT id, udId, udId || '=' || sumId FROM PEER_DEVICE WHERE udId='a' --").value, "a=1");
  ExpectAllPeers();
}

TEST_F(KeysAsSql, ADeleteThatReturnsRowsIsDoneAndReportedAsFailed) {
  const Outcome outcome = Delete("x' OR sumId='2' RETURNING * --");
  EXPECT_FALSE(outcome.succeeded);
  EXPECT_EQ(outcome.failure, "exec() does not expect results. Use executeStep.");
  EXPECT_EQ(Peers(), (Lines{"a|1", "c|3"}));
}

TEST_F(KeysAsSql, ADevicesKeyCanTakeEveryRowToo) {
  KT::TrustedZentapDbEngine trusted;
  trusted.AddZentapDeviceInfo("one", {});
  trusted.AddZentapDeviceInfo("two", {});
  EXPECT_TRUE(trusted.DeleteZentapDeviceInfo("x' OR '1'='1"));
  EXPECT_EQ(Rows(*trusted.Content().dbContentPtr, "SELECT sumId FROM trustedZentapDeviceInfo"), Lines());
  ExpectAllPeers();
}

TEST_F(KeysAsSql, AnInsertedKeyIsDataWhateverItHolds) {
  EXPECT_TRUE(peers_.AddPeerDevice("x'); DROP TABLE PEER_DEVICE; --", "4"));
  EXPECT_EQ(Peers().back(), "x'); DROP TABLE PEER_DEVICE; --|4");
}

// What is not.

TEST_F(KeysAsSql, NoSecondStatementEverRuns) {
  for (const char* second :
       {"DROP TABLE PEER_DEVICE", "DELETE FROM PEER_DEVICE", "INSERT INTO PEER_DEVICE VALUES(9,9,9)",
        "PRAGMA writable_schema=1", "ATTACH 'other.db' AS other", "VACUUM INTO 'copy.db'"}) {
    EXPECT_TRUE(Query("x'; " + std::string(second) + "; --").succeeded) << second;
    EXPECT_TRUE(Delete("x'; " + std::string(second) + "; --").succeeded) << second;
  }
  ExpectAllPeers();
}

TEST_F(KeysAsSql, NoOtherTableIsReachable) {
  peers_.Content().dbContentPtr->exec("CREATE TABLE another(id, udId, sumId)");
  EXPECT_EQ(Query("x' UNION SELECT * FROM another --").failure, "access to another.id is prohibited");
  EXPECT_EQ(Query("x' UNION SELECT 1, name, sql FROM sqlite_master --").failure,
            "access to sqlite_master.name is prohibited");
  EXPECT_EQ(Query("x' UNION SELECT 1, 2, seq FROM sqlite_sequence --").failure,
            "access to sqlite_sequence.seq is prohibited");
  EXPECT_EQ(Delete("x' OR EXISTS (SELECT * FROM another) --").failure, "access to another.id is prohibited");
  EXPECT_EQ(Query("x' UNION SELECT * FROM currZentapDeviceInfo --").failure, "no such table: currZentapDeviceInfo");
  ExpectAllPeers();
}

TEST_F(KeysAsSql, NoPragmaIsReachable) {
  EXPECT_FALSE(Query("x' UNION SELECT 1, 2, file FROM pragma_database_list --").succeeded);
  EXPECT_FALSE(Query("x' UNION SELECT 1, 2, 3 FROM pragma_optimize --").succeeded);
  EXPECT_FALSE(Query("x' UNION SELECT 1, 2, name FROM pragma_table_info('PEER_DEVICE') --").succeeded);
}

TEST_F(KeysAsSql, NoFunctionIsReachable) {
  for (const char* call : {"randomblob(1000000000)", "zeroblob(1000000000)", "load_extension('x')", "hex(udId)",
                           "readfile('C:\\file')", "writefile('C:\\file', 'x')", "(udId LIKE 'a%')", "(udId GLOB 'a*')",
                           "count(*)", "last_insert_rowid()", "json('{}')", "printf('%1000000000d', 1)"}) {
    const Outcome outcome = Query("x' UNION SELECT 1, 2, " + std::string(call) + " FROM PEER_DEVICE --");
    EXPECT_FALSE(outcome.succeeded) << call;
    EXPECT_TRUE(outcome.failure.starts_with("not authorized to use function: ") ||
                outcome.failure.starts_with("no such function: "))
        << call << ": " << outcome.failure;
    EXPECT_FALSE(Delete("x' OR " + std::string(call) + " --").succeeded) << call;
  }
  ExpectAllPeers();
}

TEST_F(KeysAsSql, NothingButSelectAndDeleteCanBeMadeOfTheStatement) {
  for (const char* rest : {"INSERT INTO PEER_DEVICE VALUES(9,9,9)", "UPDATE PEER_DEVICE SET sumId=0",
                           "ATTACH 'other.db' AS other", "DELETE FROM PEER_DEVICE RETURNING *"}) {
    EXPECT_FALSE(Query("x' UNION " + std::string(rest) + " --").succeeded) << rest;
    EXPECT_FALSE(Delete("x' OR EXISTS (" + std::string(rest) + ") --").succeeded) << rest;
    EXPECT_FALSE(Query("x' AND udId IN (" + std::string(rest) + ") --").succeeded) << rest;
  }
  ExpectAllPeers();
}

TEST_F(KeysAsSql, NoFileIsOpenedNotEvenATemporaryOne) {
  peers_.Content().dbContentPtr.reset();
  support::FaultVfs vfs;
  KT::PeerDeviceDbEngine peers;
  for (int i = 0; i < 60; ++i) {
    peers.AddPeerDevice(std::to_string(i), std::string(1'000, 's'));
  }
  vfs.ResetCounts();
  std::string sumId;
  // 3,600 rows of 2,000 bytes to be sorted and to be told apart: more than SQLite's cache holds.
  EXPECT_TRUE(peers.QueryPeerDevice(
      "x' UNION SELECT a.id, b.id, a.sumId || b.sumId FROM PEER_DEVICE a, PEER_DEVICE b ORDER BY 3, 2 --", sumId));
  EXPECT_EQ(sumId.size(), 2'000U);
  EXPECT_EQ(vfs.Count(support::FileCall::Open), 0);
  EXPECT_EQ(vfs.Count(support::FileCall::Write), 0);
}

// How much it can cost.

class KeysAsSqlBudget : public KeysAsSql {
 protected:
  // 3 to the power of 40 combinations of rows: endless for all that matters.
  static std::string EndlessSelect(const std::string& what) {
    std::string select = "SELECT " + what + " FROM PEER_DEVICE t0";
    for (int i = 1; i < 40; ++i) {
      select += ", PEER_DEVICE t" + std::to_string(i);
    }
    return select;
  }

  // Runs `attempt` and expects it to take no more processor time than it gets, with room for a debug build.
  template <class Attempt>
  static Outcome Timed(Attempt&& attempt) {
    const auto start = platform::ThreadProcessorTime();
    const Outcome outcome = attempt();
    EXPECT_LT(platform::ThreadProcessorTime() - start, 10 * KT::kKeyedStatementTime);
    return outcome;
  }
};

TEST_F(KeysAsSqlBudget, AnEndlessQueryIsInterrupted) {
  const Outcome outcome = Timed([this] { return Query("x' UNION ALL " + EndlessSelect("t0.*") + " --"); });
  EXPECT_FALSE(outcome.succeeded);
  EXPECT_EQ(outcome.failure, "interrupted");
}

TEST_F(KeysAsSqlBudget, AnEndlessDeleteIsInterruptedAndTakesNothing) {
  const Outcome outcome = Timed(
      [this] { return Delete("x' OR EXISTS (" + EndlessSelect("1") + " WHERE t0.sumId || t39.sumId = 'no') --"); });
  EXPECT_FALSE(outcome.succeeded);
  EXPECT_EQ(outcome.failure, "interrupted");
  ExpectAllPeers();
}

// Different rows all the time, which SQLite has to keep: what its memory takes is bounded by the time alone.
TEST_F(KeysAsSqlBudget, AnEndlessCollectionIsInterrupted) {
  peers_.AddPeerDevice("long", std::string(500'000, 'l'));
  const Outcome outcome = Timed([this] {
    return Query("x' UNION " +
                 EndlessSelect("t0.id, t39.id || t38.id || t37.id || t36.id || t35.id, t39.sumId || t38.sumId") +
                 " --");
  });
  EXPECT_EQ(outcome.failure, "interrupted");
}

TEST_F(KeysAsSqlBudget, EveryStatementHasItsOwn) {
  Query("x' UNION ALL " + EndlessSelect("t0.*") + " --");
  EXPECT_EQ(Query("b").value, "2");
  EXPECT_TRUE(Delete("b").succeeded);
  Query("x' UNION ALL " + EndlessSelect("t0.*") + " --");
  EXPECT_EQ(Rows(*peers_.Content().dbContentPtr, "SELECT count(*), hex('a') FROM PEER_DEVICE"), Lines{"2|61"})
      << "statements without a key have none of its limits";
}

TEST_F(KeysAsSqlBudget, TwoSelectsAreAllowedAndThreeAreNot) {
  EXPECT_EQ(Query("x' UNION SELECT * FROM (SELECT * FROM PEER_DEVICE) --").value, "3");
  const Outcome three = Query("x' UNION SELECT * FROM (SELECT * FROM (sElEcT * FROM PEER_DEVICE)) --");
  EXPECT_FALSE(three.succeeded);
  EXPECT_EQ(three.failure, "too many subqueries in a key");
  EXPECT_EQ(Query("x' UNION SELECT * FROM (VALUES(1, 2, 9)) --").value, "9");
  EXPECT_EQ(Query("x' UNION VALUES(1, 2, 3) UNION VALUES(1, 2, 3) UNION VALUES(1, 2, 3) --").failure,
            "too many subqueries in a key");
}

TEST_F(KeysAsSqlBudget, SubqueriesThatMultiplyAreRefusedBeforeSQLiteSeesThem) {
  std::string key = "x' AND (WITH a0 AS (SELECT 1 AS x)";
  for (int i = 1; i < 64; ++i) {
    const std::string previous = "a" + std::to_string(i - 1);
    key += ", a" + std::to_string(i) + " AS (SELECT 1 AS x FROM " + previous + ", " + previous + ")";
  }
  EXPECT_EQ(Timed([&] { return Query(key + " SELECT x FROM a63) --"); }).failure, "too many subqueries in a key");
}

TEST_F(KeysAsSqlBudget, WhatTwoSelectsCanMultiplyToIsBearable) {
  std::string tables = "PEER_DEVICE t0";
  std::string references = "a r0";
  for (int i = 1; i < 64; ++i) {
    tables += ", PEER_DEVICE t" + std::to_string(i);
    references += ", a r" + std::to_string(i);
  }
  const std::string key =
      "x' AND (WITH a AS NOT MATERIALIZED (SELECT t0.id FROM " + tables + ") SELECT 1 FROM " + references + ") --";
  EXPECT_FALSE(Timed([&] { return Query(key); }).succeeded);
}

TEST_F(KeysAsSqlBudget, AKeyWithoutAQuoteMayHoldAnyWords) {
  const std::string key = "select select select values WITH SELECT SELECT";
  EXPECT_TRUE(peers_.AddPeerDevice(key, "words"));
  EXPECT_EQ(Query(key).value, "words");
  EXPECT_TRUE(Delete(key).succeeded);
  ExpectAllPeers();
}

TEST_F(KeysAsSqlBudget, AValueOfAMebibyteIsReadAndOneByteMoreIsNot) {
  peers_.AddPeerDevice("fits", std::string(KT::kKeyedStatementValueBytes, 's'));
  peers_.AddPeerDevice("too long", std::string(KT::kKeyedStatementValueBytes + 1, 's'));
  EXPECT_EQ(Query("fits").value.size(), 1'048'576U);
  const Outcome outcome = Query("too long");
  EXPECT_FALSE(outcome.succeeded);
  EXPECT_EQ(outcome.failure, "string or blob too big");
  EXPECT_TRUE(Delete("too long").succeeded);
}

TEST_F(KeysAsSqlBudget, NoValueIsBuiltThatIsLarger) {
  peers_.AddPeerDevice("half", std::string(600'000, 'h'));
  EXPECT_EQ(Query("x' UNION SELECT 1, 2, sumId || sumId FROM PEER_DEVICE WHERE udId='half' --").failure,
            "string or blob too big");
}

TEST_F(KeysAsSqlBudget, ALargeTableIsNoHindranceToAnHonestKey) {
  SQLite::Database& database = *peers_.Content().dbContentPtr;
  database.exec(
      "INSERT INTO PEER_DEVICE(udId, sumId) WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n LIMIT "
      "100000) SELECT 'peer-' || i, i FROM n");
  EXPECT_EQ(Query("peer-77777").value, "77777");
  EXPECT_TRUE(Delete("peer-77777").succeeded);
  EXPECT_EQ(Query("peer-77777").value, "untouched");
}

}  // namespace
