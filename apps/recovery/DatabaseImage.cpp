#include "apps/recovery/DatabaseImage.h"

#include <utility>

namespace KT {

namespace {

constexpr const char* kName = "image";

// Bytes 18 and 19 of a database are 2 when it was last used with a write-ahead log.
bool UsesWriteAheadLog(const std::string& bytes) { return bytes.size() > 19 && bytes[18] == 2 && bytes[19] == 2; }

}  // namespace

DatabaseImage::DatabaseImage(std::string bytes, const std::optional<std::string>& journal) {
  const bool withLog = UsesWriteAheadLog(bytes);
  files_.files[kName] = std::move(bytes);
  if (journal.has_value()) {
    files_.files[std::string(kName) + "-journal"] = *journal;
  }
  database_ = std::make_unique<SQLite::Database>(kName, SQLite::OPEN_READWRITE, 0, files_.VfsName().c_str());
  database_->exec("PRAGMA trusted_schema = OFF");
  if (withLog) {
    database_->exec("PRAGMA locking_mode = EXCLUSIVE");  // such a database can then do without shared memory
  }
}

}  // namespace KT
