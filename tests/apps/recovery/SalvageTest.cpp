#include "apps/recovery/Salvage.h"

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Statement.h>
#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "apps/recovery/MemoryFiles.h"
#include "tests/apps/recovery/RecoveryTest.h"

namespace {

const KT::StoreFile& Peer() { return KT::StoreFiles()[0]; }

constexpr const char* kTable =
    "CREATE TABLE PEER_DEVICE(id INTEGER PRIMARY KEY AUTOINCREMENT, udId TEXT NOT NULL, sumId TEXT NOT NULL);";
// N rows whose udId is their id in decimals and whose sumId is as long as `length` says.
std::string Rows(int count, const std::string& length) {
  return "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " + std::to_string(count) +
         ") INSERT INTO PEER_DEVICE SELECT i, i, substr(hex(zeroblob((" + length + ") / 2 + 1)), 1, " + length +
         ") FROM n;";
}

std::string MadeBy(const std::string& sql, int pageBytes = 4096) {
  KT::MemoryFiles files;
  SQLite::Database database("file", SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE, 0, files.VfsName().c_str());
  database.exec("PRAGMA page_size = " + std::to_string(pageBytes));
  database.exec(sql);
  return files.files.at("file");
}

// "id:udId:bytes of sumId" of each row, after a sum of what was found.
Lines Salvaged(const std::string& bytes, const KT::StoreFile& file = Peer()) {
  const KT::SalvagedTable table = KT::Salvage(file, bytes);
  Lines lines;
  SQLite::Statement select(*table.database, std::string("SELECT * FROM ") + file.tableName);
  while (select.executeStep()) {
    lines.push_back(select.getColumn(0).getString() + ":" + select.getColumn(1).getString() + ":" +
                    std::to_string(select.getColumn(2).getBytes()));
  }
  EXPECT_EQ(table.rows, lines.size());
  return lines;
}

// What Salvaged must find of MadeBy(kTable + Rows(count, length of all)).
Lines Expected(int count, int length) {
  Lines lines;
  for (int i = 1; i <= count; ++i) {
    lines.push_back(std::to_string(i) + ":" + std::to_string(i) + ":" + std::to_string(length));
  }
  return lines;
}

TEST(Salvage, FindsEveryRowOfAWholeFile) {
  EXPECT_EQ(Salvaged(PeerDatabase("abc")), Lines{"1:udId:3"});
  EXPECT_EQ(Salvaged(MadeBy(kTable + Rows(1000, "50"))), Expected(1000, 50));
  EXPECT_EQ(Salvaged(MadeBy(kTable)), Lines{});
}

// 4096: a payload of up to 4061 bytes stands on its leaf, a longer one partly on overflow pages.
TEST(Salvage, FindsRowsOfEveryLengthAroundTheirLeafsRoom) {
  for (const int length : {4000, 4052, 4053, 4054, 4055, 4056, 4057, 4058, 4059, 4060, 4061, 4062, 8144, 8150, 32767}) {
    EXPECT_EQ(Salvaged(MadeBy(kTable + Rows(3, std::to_string(length)))), Expected(3, length)) << length;
  }
}

TEST(Salvage, FindsRowsOfEveryLengthOnSmallPages) {
  Lines expected;
  for (int i = 1; i <= 3000; ++i) {
    expected.push_back(std::to_string(i) + ":" + std::to_string(i) + ":" + std::to_string(i));
  }
  EXPECT_EQ(Salvaged(MadeBy(kTable + Rows(3000, "i"), 512)), expected);
}

TEST(Salvage, KeepsTheValuesOfNumbersAndText) {
  const std::string bytes =
      MadeBy(std::string(kTable) +
             "INSERT INTO PEER_DEVICE VALUES (-5, x'00ff', 1.5), (9223372036854775807, 'a', 'b'), "
             "(7, x'', 0)");
  const KT::SalvagedTable table = KT::Salvage(Peer(), bytes);
  SQLite::Statement select(*table.database,
                           "SELECT id, typeof(udId), hex(udId), typeof(sumId), sumId FROM PEER_DEVICE");
  Lines lines;
  while (select.executeStep()) {
    std::string line;
    for (int i = 0; i < 5; ++i) {
      line += select.getColumn(i).getString() + " ";
    }
    lines.push_back(line);
  }
  EXPECT_EQ(lines, (Lines{"-5 blob 00FF text 1.5 ", "7 blob  text 0 ", "9223372036854775807 text 61 text b "}));
}

// Numbers in the table of devices; 0 and 1 take no byte, others 1, 2, 3, 4, 6 or 8.
TEST(Salvage, KeepsIntegersOfEveryWidth) {
  const KT::StoreFile numbers{"numbers", "", "numbers", {"id", "a", "b", "c"}};
  const std::vector<std::int64_t> values{0,
                                         1,
                                         -1,
                                         127,
                                         -128,
                                         128,
                                         -129,
                                         32767,
                                         -32769,
                                         8388607,
                                         -8388609,
                                         2147483647,
                                         -2147483649LL,
                                         1LL << 46,
                                         -(1LL << 47),
                                         1LL << 47,
                                         std::numeric_limits<std::int64_t>::max(),
                                         std::numeric_limits<std::int64_t>::min()};
  std::string sql = "CREATE TABLE numbers(id INTEGER PRIMARY KEY, a, b, c);";
  for (const std::int64_t value : values) {
    sql += "INSERT INTO numbers VALUES (NULL, " +
           (value == std::numeric_limits<std::int64_t>::min() ? "-9223372036854775807 - 1" : std::to_string(value)) +
           ", 0.5, 1);";
  }
  const KT::SalvagedTable table = KT::Salvage(numbers, MadeBy(sql));
  SQLite::Statement select(*table.database, "SELECT a, b, c FROM numbers ORDER BY id");
  std::vector<std::int64_t> seen;
  while (select.executeStep()) {
    seen.push_back(select.getColumn(0).getInt64());
    EXPECT_EQ(select.getColumn(1).getDouble(), 0.5);
    EXPECT_EQ(select.getColumn(2).getInt64(), 1);
  }
  EXPECT_EQ(seen, values);
}

TEST(Salvage, NeedsNeitherTheFirstPageNorTheTablesTree) {
  for (const int pageBytes : {512, 4096, 65536}) {
    std::string bytes = MadeBy(kTable + Rows(1000, "300"), pageBytes);
    bytes.replace(0, static_cast<std::size_t>(pageBytes) * 2, static_cast<std::size_t>(pageBytes) * 2, '\x5a');
    const Lines found = Salvaged(bytes);
    EXPECT_GT(found.size(), pageBytes == 65536 ? 700U : 990U) << pageBytes;
  }
}

TEST(Salvage, FindsWhatStandsBeforeTheCutInAFile) {
  const std::string bytes = MadeBy(kTable + Rows(1000, "50"));
  const Lines found = Salvaged(bytes.substr(0, bytes.size() / 2 / 4096 * 4096 + 100));
  EXPECT_GT(found.size(), 300U);
  EXPECT_LT(found.size(), 600U);
  EXPECT_EQ(found, Expected(static_cast<int>(found.size()), 50));
}

TEST(Salvage, LeavesOutRowsThatWereDeletedWithTheirPages) {
  const std::string bytes = MadeBy(kTable + Rows(1000, "50") + "DELETE FROM PEER_DEVICE WHERE id > 10;");
  ASSERT_GT(bytes.size(), 10U * 4096);  // the free pages are still there
  EXPECT_EQ(Salvaged(bytes), Expected(10, 50));
}

TEST(Salvage, FindsNothingWhereThereIsNothing) {
  EXPECT_EQ(Salvaged(""), Lines{});
  EXPECT_EQ(Salvaged("short"), Lines{});
  EXPECT_EQ(Salvaged(std::string(100'000, '\0')), Lines{});
  EXPECT_EQ(Salvaged(MadeBy("CREATE TABLE other(a, b); INSERT INTO other VALUES (1, 2)")), Lines{});
  EXPECT_EQ(Salvaged(PeerDatabase("abc"), KT::StoreFiles()[1]), Lines{});
}

// Cells that all lead to one long row: only once is there room for it.
TEST(Salvage, TakesNoMoreThanTheFileCouldHold) {
  std::string bytes = MadeBy(kTable + Rows(1, "200000"));
  const std::size_t leaf = 4096;  // of the table, on the second page
  ASSERT_EQ(bytes[leaf], '\x0d');
  const std::string place = bytes.substr(leaf + 8, 2);
  bytes[leaf + 4] = '\x64';
  for (std::size_t i = 0; i < 100; ++i) {
    bytes.replace(leaf + 8 + 2 * i, 2, place);
  }
  EXPECT_EQ(Salvaged(bytes), Expected(1, 200000));
}

TEST(Salvage, TakesAnyBytes) {
  const std::string whole = MadeBy(kTable + Rows(200, "i * 5"), 512);
  const Lines rows = Salvaged(whole);
  std::mt19937 random(20261121);
  for (int round = 0; round < 300; ++round) {
    std::string bytes = whole;
    for (std::size_t i = random() % 400; i > 0; --i) {
      bytes[random() % bytes.size()] = static_cast<char>(random());
    }
    const Lines found = Salvaged(bytes.substr(0, random() % 4 == 0 ? random() % bytes.size() : bytes.size()));
    EXPECT_LE(found.size(), 4 * rows.size());
  }
}

}  // namespace
