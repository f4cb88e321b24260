// A statement about the rows of one key, whose text holds the key as it came.
#pragma once

#include <SQLiteCpp/Statement.h>

#include <chrono>
#include <optional>
#include <string>

struct sqlite3;

namespace SQLite {
class Database;
}

namespace KT {

// What a key that holds a quote, and so brings SQL of its own into the statement, gets from it. A key without one is a
// plain text to SQLite, and none of this is ever felt.
inline constexpr std::chrono::milliseconds kKeyedStatementTime{200};  // of the processor
inline constexpr int kKeyedStatementValueBytes = 1024 * 1024;         // of one value, stored or computed
inline constexpr int kMostSelectsInAKey = 2;                          // references to references multiply

// In force on a connection as long as it lives, one at a time. What runs meanwhile may read and delete the rows of one
// table and nothing else: no other table, no SQL function, no pragma. It fails with SQLITE_INTERRUPT when its time is
// over and with SQLITE_TOOBIG at a value that is too large.
class KeyedStatementGuard {
 public:
  // Both must outlive it.
  KeyedStatementGuard(SQLite::Database& database, const std::string& tableName);
  ~KeyedStatementGuard();

  KeyedStatementGuard(const KeyedStatementGuard&) = delete;
  KeyedStatementGuard& operator=(const KeyedStatementGuard&) = delete;

 private:
  static int Authorize(void* self, int action, const char* object, const char* column, const char* database,
                       const char* trigger);
  static int CheckTime(void* self);

  sqlite3* const connection_;
  const std::string& tableName_;
  const int previousValueBytes_;
  std::optional<std::chrono::nanoseconds> end_;  // once there is reason to look at the time
};

class KeyedStatement {
 public:
  // Prepares `verb` (SELECT * FROM or DELETE FROM, a blank at its end), the table, " WHERE ", the column, " = '", the
  // key and "';". Only the first statement of that text is ever run. `database` and `tableName` must outlive it. Throws
  // SQLite::Exception.
  KeyedStatement(SQLite::Database& database, const char* verb, const std::string& tableName, const std::string& column,
                 const std::string& key);

  SQLite::Statement& Sql() { return statement_; }

 private:
  KeyedStatementGuard guard_;  // outlives the statement, which SQLite may prepare anew
  SQLite::Statement statement_;
};

}  // namespace KT
