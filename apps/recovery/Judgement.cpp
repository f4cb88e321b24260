#include "apps/recovery/Judgement.h"

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Exception.h>
#include <SQLiteCpp/Statement.h>

#include <algorithm>
#include <vector>

#include "apps/recovery/DatabaseImage.h"

namespace KT {

namespace {

constexpr const char* kOk = "ok";

std::string CheckIntegrity(SQLite::Database& database) {
  SQLite::Statement check(database, "PRAGMA integrity_check(1)");
  return check.executeStep() ? check.getColumn(0).getString() : "integrity_check says nothing";
}

std::vector<std::string> ColumnsOf(SQLite::Database& database, const std::string& table) {
  std::vector<std::string> names;
  SQLite::Statement info(database, "SELECT name FROM pragma_table_info(?)");
  info.bind(1, table);
  while (info.executeStep()) {
    names.push_back(info.getColumn(0).getString());
  }
  return names;
}

bool HasTable(SQLite::Database& database, const std::string& table) {
  SQLite::Statement search(database, "SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = ? COLLATE NOCASE");
  search.bind(1, table);
  return search.executeStep();
}

std::string CheckSchema(SQLite::Database& database, const StoreFile& file) {
  if (!HasTable(database, file.tableName)) {
    return std::string("the table ") + file.tableName + " is missing";
  }
  const std::vector<std::string> columns = ColumnsOf(database, file.tableName);
  for (const std::string& column : file.columns) {
    if (std::find(columns.begin(), columns.end(), column) == columns.end()) {
      return std::string("the table ") + file.tableName + " has no column " + column;
    }
  }
  return kOk;
}

std::int64_t CountRows(SQLite::Database& database, const StoreFile& file) {
  SQLite::Statement count(database, std::string("SELECT count(*) FROM ") + file.tableName);
  return count.executeStep() ? count.getColumn(0).getInt64() : 0;
}

}  // namespace

std::string Judgement::Problem() const {
  if (integrity != kOk) {
    return integrity;
  }
  return schema == kOk ? std::string() : schema;
}

Judgement Judge(const StoreFile& file, const std::string& bytes, const std::optional<std::string>& journal) {
  Judgement judgement;
  if (bytes.empty()) {
    judgement.integrity = "it is empty";
    return judgement;
  }
  try {
    DatabaseImage image(bytes, journal);
    judgement.integrity = CheckIntegrity(image.Get());
    judgement.schema = CheckSchema(image.Get(), file);
    if (judgement.schema == kOk) {
      judgement.rows = CountRows(image.Get(), file);
    }
  } catch (const SQLite::Exception& error) {
    // SQLite reports damage by a result as well as by an error; a file that came so far as ok is not whole either.
    judgement.integrity = error.what();
  }
  return judgement;
}

}  // namespace KT
