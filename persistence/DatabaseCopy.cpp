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

void CopyAll(SQLite::Database& from, SQLite::Database& to) {
  SQLite::Backup copy(to, from);
  if (const int result = copy.executeStep(); result != SQLITE_DONE) {
    throw SQLite::Exception(sqlite3_errstr(result), result);
  }
}

}  // namespace

void SaveToFile(SQLite::Database& memory, const std::string& filePath) {
  SQLite::Database file = OpenFile(filePath);
  CopyAll(memory, file);
}

void LoadFromFile(SQLite::Database& memory, const std::string& filePath) {
  SQLite::Database file = OpenFile(filePath);
  CopyAll(file, memory);
}

}  // namespace KT
