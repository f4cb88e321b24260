// A transaction that is rolled back unless it is committed.
#pragma once

namespace SQLite {
class Database;
}

namespace KT {

// SQLite::Transaction for want of memory as well: that one's destructor runs ROLLBACK and, where SQLite has rolled back
// by itself, builds an exception for it. Without memory for that exception the program would end.
class Transaction {
 public:
  // Begins it, deferred: nothing is locked yet. `database` must outlive it. Throws SQLite::Exception.
  explicit Transaction(SQLite::Database& database);
  ~Transaction();

  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  // Once. Throws SQLite::Exception.
  void Commit();

 private:
  SQLite::Database& database_;
  bool isCommitted_ = false;
};

}  // namespace KT
