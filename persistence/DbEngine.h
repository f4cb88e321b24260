// The base of the table engines: a database in memory that mirrors a disk file.
#pragma once

#include <atomic>
#include <cstdint>
#include <ostream>
#include <string>

#include "persistence/DbContent.h"
#include "persistence/SaveCounts.h"

namespace KT {

// Every operation returns true on success and logs its own failures; none throws. No locks: one caller at a time.
// What each failure leaves on the disk: docs/durability.md.
class DbEngine {
 public:
  DbEngine() = default;
  virtual ~DbEngine();

  DbEngine(const DbEngine&) = delete;
  DbEngine& operator=(const DbEngine&) = delete;

  // Makes the folder of the console user, opens a new memory database (a previous one is dropped with everything
  // unsaved in it), and loads the disk file or, where there is none, makes the engine's table. Writes no file. After a
  // failure the descriptor stays as it was then, perhaps with an open database that has no table.
  bool InitDb(DbContent& content);

  // Writes the whole memory database to the disk file, by way of a copy of the old file that is kept until the new one
  // is complete. False leaves that copy behind.
  bool SaveDbIntoDisk(DbContent& content);

  // The saves of this engine so far. Any thread; each of the two numbers is right for itself.
  SaveCounts Saves() const;

  // Replaces the memory database by the content of the disk file.
  bool LoadDbFromDisk(DbContent& content);

  // Makes the engine's table where there is none.
  bool CreateTable(DbContent& content);

  // Deletes the rows whose sumId is `key`, whatever the key column is; true also when there were none. The key becomes
  // part of the statement as it stands, so that one with a quote in it fails.
  bool DeleteDbItem(const std::string& key, DbContent& content);

 protected:
  // Appends "(id INTEGER PRIMARY KEY AUTOINCREMENT, ...);" to the CREATE statement.
  virtual void AppendColumnDefs(std::ostream& statement) const = 0;

  // Deletes the rows whose `column` is `key`, as DeleteDbItem does and with its texts, logged under `function`.
  static bool DeleteRows(const std::string& column, const std::string& key, DbContent& content, const char* function);

 private:
  std::atomic<std::uint64_t> saved_ = 0;
  std::atomic<std::uint64_t> failedSinceLastSaved_ = 0;
};

}  // namespace KT
