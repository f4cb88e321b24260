// What a save puts on the disk, and in which order.
#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Exception.h>
#include <gtest/gtest.h>

#include "persistence/DatabaseCopy.h"
#include "tests/persistence/EngineTest.h"
#include "tests/support/MemoryMachine.h"

namespace {

using support::DiskEvent;
using Kind = DiskEvent::Kind;

constexpr const char* kFile = "C:\\Users\\alice\\notes.db";
const int kReadWriteCreate = SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE;

class DurableSave : public testing::Test {
 protected:
  DurableSave() { memory_.exec("CREATE TABLE notes (id, note); INSERT INTO notes VALUES (1, 'new')"); }

  void Save() { KT::SaveToFile(memory_, kFile); }

  // The position of the first such event from `start` on; the number of events when there is none.
  std::size_t Find(Kind kind, int file, std::size_t start = 0) {
    const auto& events = machine_.Disk().Events();
    while (start < events.size() && (events[start].kind != kind || events[start].file != file)) {
      ++start;
    }
    return start;
  }

  support::MemoryMachine machine_;
  SQLite::Database memory_{":memory:", kReadWriteCreate};
};

}  // namespace

TEST_F(DurableSave, SyncsTheFileThenEmptiesAndSyncsTheJournalAndOnlyThenDeletesIt) {
  Save();
  const int file = machine_.Disk().Find(kFile)->number;
  const int journal = file + 1;
  const std::size_t end = machine_.Disk().Events().size();

  const std::size_t synced = Find(Kind::Sync, file);
  EXPECT_EQ(Find(Kind::Write, file, synced), end) << "nothing is written after the sync";
  const std::size_t emptied = Find(Kind::Resize, journal, synced);
  ASSERT_LT(emptied, end);
  EXPECT_EQ(machine_.Disk().Events()[emptied].offset, 0U);
  const std::size_t done = Find(Kind::Sync, journal, emptied);
  EXPECT_LT(done, end);
  EXPECT_EQ(Find(Kind::Delete, journal, done), end - 1);
}

TEST_F(DurableSave, LeavesNoJournalWhenTheDiskIsFull) {
  machine_.Disk().LimitRoom(4096);
  EXPECT_THROW(Save(), SQLite::Exception);
  EXPECT_FALSE(machine_.Disk().Contains(std::string(kFile) + "-journal"));
}

TEST_F(DurableSave, ReplacesAFileWhoseSchemaCannotBeRead) {
  {
    SQLite::Database file(kFile, kReadWriteCreate);
    file.exec("CREATE TABLE notes (id, note); PRAGMA writable_schema = ON");
    file.exec("UPDATE sqlite_master SET sql = 'CREATE TABLE notes (('");
  }
  Save();
  SQLite::Database file(kFile, SQLite::OPEN_READONLY);
  EXPECT_EQ(Rows(file, "SELECT note FROM notes"), Lines{"new"});
}
