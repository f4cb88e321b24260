#include "bench/store/PlainStore.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace bench {

namespace {
constexpr int kBusyTimeoutMilliseconds = 500;
}  // namespace

PlainStore::PlainStore(std::string file, const char* createText) : file_(std::move(file)), aside_(file_ + ".tmp") {
  Check(sqlite3_open_v2(":memory:", &memory_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr), memory_);
  Run("PRAGMA auto_vacuum = 0");
  Run("PRAGMA cache_size = 1000");
  Run(createText);
}

PlainStore::~PlainStore() { sqlite3_close(memory_); }

void PlainStore::Check(int result, sqlite3* database) const {
  if (result == SQLITE_OK) return;
  std::fprintf(stderr, "plain store %s: %s\n", file_.c_str(), sqlite3_errmsg(database));
  std::exit(EXIT_FAILURE);
}

void PlainStore::Run(const std::string& text, const Visit& bind, const Visit& row) {
  sqlite3_stmt* statement = nullptr;
  Check(sqlite3_prepare_v2(memory_, text.c_str(), static_cast<int>(text.size()), &statement, nullptr), memory_);
  if (bind) bind(statement);
  while (sqlite3_step(statement) == SQLITE_ROW) {
    if (row) row(statement);
  }
  Check(sqlite3_finalize(statement), memory_);
}

void PlainStore::Save() {
  Run("BEGIN");
  struct stat status {};
  const bool moved = stat(file_.c_str(), &status) == 0 && S_ISREG(status.st_mode);
  if (moved && renameat2(AT_FDCWD, file_.c_str(), AT_FDCWD, aside_.c_str(), RENAME_NOREPLACE) != 0) {
    std::perror(file_.c_str());
    std::exit(EXIT_FAILURE);
  }
  CopyToFile();
  Run("COMMIT");
  if (moved && unlink(aside_.c_str()) != 0) {
    std::perror(aside_.c_str());
    std::exit(EXIT_FAILURE);
  }
}

void PlainStore::CopyToFile() {
  sqlite3* target = nullptr;
  Check(sqlite3_open_v2(file_.c_str(), &target, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr), target);
  sqlite3_busy_timeout(target, kBusyTimeoutMilliseconds);
  Check(sqlite3_exec(target, "PRAGMA journal_mode = TRUNCATE", nullptr, nullptr, nullptr), target);
  sqlite3_backup* const copy = sqlite3_backup_init(target, "main", memory_, "main");
  if (copy == nullptr || sqlite3_backup_step(copy, -1) != SQLITE_DONE) {
    std::fprintf(stderr, "plain store %s: the copy is not complete\n", file_.c_str());
    std::exit(EXIT_FAILURE);
  }
  Check(sqlite3_backup_finish(copy), target);
  Check(sqlite3_exec(target, "PRAGMA journal_mode = DELETE", nullptr, nullptr, nullptr), target);
  sqlite3_close(target);
}

}  // namespace bench
