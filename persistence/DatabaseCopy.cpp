#include "persistence/DatabaseCopy.h"

#include <SQLiteCpp/Backup.h>
#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Exception.h>
#include <sqlite3.h>

#include "platform/OperatingSystem.h"

namespace KT {

namespace {

SQLite::Database OpenFile(const std::string& filePath) {
  return SQLite::Database(platform::OperatingSystem::Get().SqliteFileName(filePath),
                          SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE, kFileBusyTimeoutMilliseconds);
}

// Ends transactions of a file by emptying the journal and syncing it, instead of deleting it: a deletion is on the disk
// only once the folder is, which Windows promises nowhere, and until then a power cut could bring the journal back and
// undo the transaction. SQLITE_DEFAULT_SYNCHRONOUS=3 does not help: a connection acts on it only after some pragmas.
class EmptiedJournal {
 public:
  explicit EmptiedJournal(SQLite::Database& file) : file_(file) {
    // A file whose schema cannot be read goes on with SQLite's own way: it is about to be overwritten.
    const int result = file_.tryExec("PRAGMA journal_mode = TRUNCATE");
    if (result == SQLITE_BUSY) {
      throw SQLite::Exception(sqlite3_errstr(result), result);
    }
  }
  EmptiedJournal(const EmptiedJournal&) = delete;
  EmptiedJournal& operator=(const EmptiedJournal&) = delete;
  // Deletes the empty journal. One that stays behind does no harm.
  ~EmptiedJournal() { file_.tryExec("PRAGMA journal_mode = DELETE"); }

 private:
  SQLite::Database& file_;
};

void CopyAll(SQLite::Database& from, SQLite::Database& to) {
  SQLite::Backup copy(to, from);
  if (const int result = copy.executeStep(); result != SQLITE_DONE) {
    throw SQLite::Exception(sqlite3_errstr(result), result);
  }
}

}  // namespace

void SaveToFile(SQLite::Database& memory, const std::string& filePath) {
  SQLite::Database file = OpenFile(filePath);
  const EmptiedJournal journal(file);
  CopyAll(memory, file);
}

void LoadFromFile(SQLite::Database& memory, const std::string& filePath) {
  SQLite::Database file = OpenFile(filePath);
  CopyAll(file, memory);
}

}  // namespace KT
