#include "apps/recovery/Judgement.h"

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <gtest/gtest.h>

#include "apps/recovery/MemoryFiles.h"
#include "persistence/CurrZentapDbEngine.h"
#include "persistence/PeerDeviceDbEngine.h"
#include "persistence/TrustedZentapDbEngine.h"
#include "tests/apps/recovery/RecoveryTest.h"

namespace {

const KT::StoreFile& Peer() { return KT::StoreFiles()[0]; }

// The bytes of a database that some SQL has made.
std::string MadeBy(const std::string& sql) {
  KT::MemoryFiles files;
  SQLite::Database("file", SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE, 0, files.VfsName().c_str()).exec(sql);
  return files.files.at("file");
}

}  // namespace

TEST(Judgement, FindsAFileWholeWithItsRowsCounted) {
  const KT::Judgement judgement = KT::Judge(Peer(), PeerDatabase("a"));
  EXPECT_TRUE(judgement.IsWhole());
  EXPECT_EQ(judgement.integrity, "ok");
  EXPECT_EQ(judgement.schema, "ok");
  EXPECT_EQ(judgement.rows, 1);
  EXPECT_EQ(judgement.Problem(), "");
}

TEST(Judgement, FindsAnEmptyFileNotWhole) {
  const KT::Judgement judgement = KT::Judge(Peer(), "");
  EXPECT_FALSE(judgement.IsWhole());
  EXPECT_EQ(judgement.Problem(), "it is empty");
}

TEST(Judgement, FindsWhatIsNoDatabaseNotWhole) {
  EXPECT_EQ(KT::Judge(Peer(), std::string(8192, 'x')).Problem(), "file is not a database");
  EXPECT_EQ(KT::Judge(Peer(), "short").Problem(), "file is not a database");
}

TEST(Judgement, FindsATruncatedFileNotWhole) {
  const std::string bytes = PeerDatabase("a");
  EXPECT_EQ(KT::Judge(Peer(), bytes.substr(0, bytes.size() - 4096)).Problem(), "database disk image is malformed");
}

TEST(Judgement, FindsADamagedPageNotWhole) {
  std::string bytes = PeerDatabase("a");
  ASSERT_EQ(bytes.size() % 4096, 0U);
  bytes.replace(4096, 4096, std::string(4096, '\0'));
  EXPECT_FALSE(KT::Judge(Peer(), bytes).IsWhole());
}

TEST(Judgement, FindsADatabaseWithoutTheTableNotWhole) {
  EXPECT_EQ(KT::Judge(Peer(), MadeBy("CREATE TABLE other(a)")).Problem(), "the table PEER_DEVICE is missing");
}

TEST(Judgement, TakesNoViewForTheTable) {
  EXPECT_EQ(KT::Judge(Peer(), MadeBy("CREATE VIEW PEER_DEVICE AS SELECT 1 AS id, 2 AS udId, 3 AS sumId")).Problem(),
            "the table PEER_DEVICE is missing");
}

TEST(Judgement, FindsATableWithoutOneOfItsColumnsNotWhole) {
  EXPECT_EQ(KT::Judge(Peer(), MadeBy("CREATE TABLE PEER_DEVICE(id INTEGER, udId TEXT)")).Problem(),
            "the table PEER_DEVICE has no column sumId");
}

TEST(Judgement, AcceptsColumnsInAnotherOrderAndMoreOfThem) {
  EXPECT_TRUE(KT::Judge(Peer(), MadeBy("CREATE TABLE peer_device(sumId, note, udId, id)")).IsWhole());
}

TEST(Judgement, AcceptsADatabaseThatWasUsedWithAWriteAheadLog) {
  std::string bytes = PeerDatabase("a");
  bytes[18] = bytes[19] = 2;
  EXPECT_TRUE(KT::Judge(Peer(), bytes).IsWhole());
}

TEST(Judgement, TakesAFileWithoutItsJournalAsItStands) {
  const HotDatabase hot = HalfChangedPeerDatabase();
  EXPECT_TRUE(KT::Judge(Peer(), hot.file).IsWhole());
}

TEST(Judgement, RollsTheCopyBackWhenItGetsAJournal) {
  // A fresh journal empties the copy: what it must never do to the file.
  EXPECT_EQ(KT::Judge(Peer(), PeerDatabase("a"), JournalHeader(0)).Problem(), "the table PEER_DEVICE is missing");
}

TEST(Judgement, GrowsNoCopyBeyondWhatAFileMayHold) {
  // SQLite takes a journal at its word, whatever it says of the file's size before the change: here 8 TiB.
  const std::string journal = JournalHeader(0).replace(16, 4, "\x7f\xff\xff\xff");
  EXPECT_EQ(KT::Judge(Peer(), PeerDatabase("a"), journal).Problem(), "database or disk is full");
}

TEST(Judgement, SeesWhatAHotJournalBringsBack) {
  HotDatabase hot = HalfChangedPeerDatabase();
  hot.file.replace(4096, 4096, std::string(4096, '\0'));  // the change had reached the disk in part
  EXPECT_FALSE(KT::Judge(Peer(), hot.file).IsWhole());
  EXPECT_TRUE(KT::Judge(Peer(), hot.file, hot.journal).IsWhole());
}

TEST(StoreFiles, AreThoseOfTheEngines) {
  const support::ConsoleProfile profile;
  support::FakeOperatingSystem system(profile.SamName());
  KT::PeerDeviceDbEngine peer;
  KT::CurrZentapDbEngine current;
  KT::TrustedZentapDbEngine trusted;
  const std::vector<const KT::DbContent*> contents{&peer.Content(), &current.Content(), &trusted.Content()};
  ASSERT_EQ(KT::StoreFiles().size(), contents.size());
  for (std::size_t i = 0; i < contents.size(); ++i) {
    EXPECT_EQ(KT::StoreFiles()[i].fileName, contents[i]->fileName);
    EXPECT_EQ(KT::StoreFiles()[i].tableName, contents[i]->tableName);
    Lines columns;
    SQLite::Statement info(*contents[i]->dbContentPtr, "SELECT name FROM pragma_table_info(?)");
    info.bind(1, contents[i]->tableName);
    while (info.executeStep()) {
      columns.push_back(info.getColumn(0).getString());
    }
    EXPECT_EQ(KT::StoreFiles()[i].columns, columns);
  }
}
