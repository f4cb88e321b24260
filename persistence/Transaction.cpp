#include "persistence/Transaction.h"

#include <SQLiteCpp/Database.h>
#include <sqlite3.h>

namespace KT {

Transaction::Transaction(SQLite::Database& database) : database_(database) { database_.exec("BEGIN"); }

Transaction::~Transaction() {
  if (!isCommitted_) {
    // A failure means that SQLite has rolled back already.
    sqlite3_exec(database_.getHandle(), "ROLLBACK", nullptr, nullptr, nullptr);
  }
}

void Transaction::Commit() {
  database_.exec("COMMIT");
  isCommitted_ = true;
}

}  // namespace KT
