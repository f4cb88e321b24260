// A database that is opened on a copy of a file's bytes.
#pragma once

#include <SQLiteCpp/Database.h>

#include <memory>
#include <optional>
#include <string>

#include "apps/recovery/MemoryFiles.h"

namespace KT {

// What it does stays in memory. SQL of the file's own schema cannot reach beyond it.
class DatabaseImage {
 public:
  // Without a journal SQLite takes the bytes as they are; with one it may roll them back first. Throws
  // SQLite::Exception.
  explicit DatabaseImage(std::string bytes, const std::optional<std::string>& journal = {});

  SQLite::Database& Get() { return *database_; }

 private:
  MemoryFiles files_;
  std::unique_ptr<SQLite::Database> database_;  // closed before the files go
};

}  // namespace KT
