#include "tests/support/SqliteAllocationFaults.h"

#include <sqlite3.h>

#include "tests/support/AllocationFaults.h"

namespace support {

namespace {

sqlite3_mem_methods g_real;

void* Malloc(int size) { return IsAllocationMadeToFail(Allocator::Sqlite) ? nullptr : g_real.xMalloc(size); }

void* Realloc(void* memory, int size) {
  return IsAllocationMadeToFail(Allocator::Sqlite) ? nullptr : g_real.xRealloc(memory, size);
}

}  // namespace

bool LetSqliteRunOutOfMemory() {
  if (sqlite3_config(SQLITE_CONFIG_GETMALLOC, &g_real) != SQLITE_OK) {
    return false;
  }
  sqlite3_mem_methods methods = g_real;
  methods.xMalloc = Malloc;
  methods.xRealloc = Realloc;
  return sqlite3_config(SQLITE_CONFIG_MALLOC, &methods) == SQLITE_OK;
}

}  // namespace support
