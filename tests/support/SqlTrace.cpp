#include "tests/support/SqlTrace.h"

#include <sqlite3.h>

#include <utility>

namespace support {

namespace {

// SQLite's hook for new connections takes no context.
std::function<void(const std::string&)> g_listener;

int OnStatement(unsigned, void*, void* statement, void*) {
  g_listener(sqlite3_sql(static_cast<sqlite3_stmt*>(statement)));
  return 0;
}

int OnOpen(sqlite3* database, const char**, const void*) {
  return sqlite3_trace_v2(database, SQLITE_TRACE_STMT, OnStatement, nullptr);
}

// SQLite declares the hook without its arguments and calls it with them.
auto Hook() { return reinterpret_cast<void (*)()>(OnOpen); }

}  // namespace

SqlTrace::SqlTrace(std::function<void(const std::string&)> listener) {
  g_listener = std::move(listener);
  sqlite3_auto_extension(Hook());
}

SqlTrace::~SqlTrace() {
  sqlite3_cancel_auto_extension(Hook());
  g_listener = nullptr;
}

}  // namespace support
