// The rows of the service's tables, read past the service.
#pragma once

#include <sqlite3.h>

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace fuzz {

struct TableRow {
  std::int64_t id;
  std::string key;
  std::string rest;  // the other columns, each with its type and length

  bool operator==(const TableRow&) const = default;
};

using TableRows = std::vector<TableRow>;

enum Table : std::size_t { kPeerTable, kCurrentTable, kTrustedTable };
inline constexpr std::size_t kTables = 3;

// Notes the memory databases that are opened while it lives, in their order: the service's tables. One at a time.
class TableWatch {
 public:
  TableWatch();
  ~TableWatch();

  TableWatch(const TableWatch&) = delete;
  TableWatch& operator=(const TableWatch&) = delete;

  // Once all three are open, and no longer when the first of them is about to be closed.
  void Prepare();
  void Release() { statements_.clear(); }

  // How many rows were inserted, changed and deleted so far.
  int Changes(Table table) const { return sqlite3_total_changes(databases_.at(table)); }
  // By id.
  TableRows Rows(Table table);
  // A number that changes with the schema.
  int SchemaVersion(Table table);
  // Deletes all rows and lets ids begin anew, in memory alone.
  void Clear(Table table);

 private:
  using Statement = std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)>;

  // Of one table; kept, since preparing them takes longer than running them.
  struct Statements {
    Statement rows;
    Statement schemaVersion;
    Statement clearRows;
    Statement clearSequence;
  };

  static int OnOpen(sqlite3* database, const char** error, const void* api);
  static Statement Prepared(sqlite3* database, const std::string& sql);

  std::vector<sqlite3*> databases_;
  std::vector<Statements> statements_;
};

}  // namespace fuzz
