#include "fuzz/TableWatch.h"

#include "fuzz/FuzzInput.h"

namespace fuzz {

namespace {

constexpr std::array<const char*, kTables> kNames{"PEER_DEVICE", "currZentapDeviceInfo", "trustedZentapDeviceInfo"};

TableWatch* g_watch = nullptr;  // SQLite's hook for new connections takes no context

std::string Text(sqlite3_stmt* row, int column) {
  const auto* const bytes = static_cast<const char*>(sqlite3_column_blob(row, column));
  const auto size = static_cast<std::size_t>(sqlite3_column_bytes(row, column));
  return size == 0 ? std::string() : std::string(bytes, size);
}

std::string Columns(sqlite3_stmt* row, int first) {
  std::string columns;
  for (int i = first; i < sqlite3_column_count(row); ++i) {
    const std::string text = Text(row, i);
    columns += std::to_string(sqlite3_column_type(row, i)) + ":" + std::to_string(text.size()) + ":" + text;
  }
  return columns;
}

void Run(sqlite3_stmt* statement) {
  Require(sqlite3_step(statement) == SQLITE_DONE);
  sqlite3_reset(statement);
}

}  // namespace

TableWatch::TableWatch() {
  g_watch = this;
  sqlite3_auto_extension(reinterpret_cast<void (*)()>(&OnOpen));
}

TableWatch::~TableWatch() { sqlite3_cancel_auto_extension(reinterpret_cast<void (*)()>(&OnOpen)); }

int TableWatch::OnOpen(sqlite3* database, const char**, const void*) {
  const char* const file = sqlite3_db_filename(database, "main");
  if (file == nullptr || *file == '\0') g_watch->databases_.push_back(database);
  return SQLITE_OK;
}

TableWatch::Statement TableWatch::Prepared(sqlite3* database, const std::string& sql) {
  sqlite3_stmt* statement = nullptr;
  Require(sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr) == SQLITE_OK);
  return {statement, &sqlite3_finalize};
}

void TableWatch::Prepare() {
  Require(databases_.size() == kTables);
  for (std::size_t i = 0; i < kTables; ++i) {
    sqlite3* const database = databases_[i];
    const std::string name = kNames[i];
    statements_.push_back({Prepared(database, "SELECT * FROM " + name + " ORDER BY id"),
                           Prepared(database, "PRAGMA schema_version"), Prepared(database, "DELETE FROM " + name),
                           Prepared(database, "DELETE FROM sqlite_sequence")});
  }
}

TableRows TableWatch::Rows(Table table) {
  TableRows rows;
  sqlite3_stmt* const select = statements_.at(table).rows.get();
  while (sqlite3_step(select) == SQLITE_ROW) {
    rows.push_back({sqlite3_column_int64(select, 0), Text(select, 1), Columns(select, 2)});
  }
  Require(sqlite3_reset(select) == SQLITE_OK);
  return rows;
}

int TableWatch::SchemaVersion(Table table) {
  sqlite3_stmt* const pragma = statements_.at(table).schemaVersion.get();
  Require(sqlite3_step(pragma) == SQLITE_ROW);
  const int version = sqlite3_column_int(pragma, 0);
  Require(sqlite3_reset(pragma) == SQLITE_OK);
  return version;
}

void TableWatch::Clear(Table table) {
  Run(statements_.at(table).clearRows.get());
  Run(statements_.at(table).clearSequence.get());
}

}  // namespace fuzz
