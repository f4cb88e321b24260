// SQLite without buffers of its own.
#pragma once

#include <sqlite3.h>

#include "fuzz/FuzzInput.h"

namespace fuzz {

// Every object that SQLite makes becomes an allocation of its own: the sanitizer sees a step past its end, and opening
// a database does not begin with filling 200 KiB. Before any other use of SQLite.
inline void UsePlainSqliteMemory() {
  Require(sqlite3_config(SQLITE_CONFIG_LOOKASIDE, 0, 0) == SQLITE_OK);
  Require(sqlite3_config(SQLITE_CONFIG_PAGECACHE, nullptr, 0, 0) == SQLITE_OK);
}

}  // namespace fuzz
