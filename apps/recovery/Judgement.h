// Whether a database file is whole, from a copy of its bytes: nothing on the disk is opened by SQLite, let alone rolled
// back.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "apps/recovery/StoreFile.h"

namespace KT {

struct Judgement {
  std::string integrity;  // "ok", or what is wrong with the file as a database
  std::string schema;     // "ok", or what the engine's table lacks; empty when it could not be looked at
  std::int64_t rows = 0;  // in the engine's table; 0 when it could not be looked at

  // The file holds more than 0 bytes, integrity_check says ok, and the engine's table is there with its columns.
  bool IsWhole() const { return integrity == "ok" && schema == "ok"; }

  // What is wrong, for people; empty for a whole file.
  std::string Problem() const;
};

// Judges the content of `file`. With a journal, what SQLite makes of the two: it rolls the copy back.
Judgement Judge(const StoreFile& file, const std::string& bytes, const std::optional<std::string>& journal = {});

}  // namespace KT
