// What can still be read of a damaged database file.
#pragma once

#include <SQLiteCpp/Database.h>

#include <cstddef>
#include <memory>
#include <string>

#include "apps/recovery/StoreFile.h"

namespace KT {

struct SalvagedTable {
  // In memory; holds the engine's table alone, with its columns in their order and the rows by their ids.
  std::unique_ptr<SQLite::Database> database;
  std::size_t rows = 0;
};

// Looks at each page of `bytes` for rows with as many columns as the engine's table has, wherever the table's own tree
// no longer leads to them. Pages that the file itself calls free are left out; where its first page is damaged that is
// not known, and rows that were deleted may be among those found. A row may also be found twice, in an older and a
// newer form. Throws SQLite::Exception only where SQLite gets no memory.
SalvagedTable Salvage(const StoreFile& file, const std::string& bytes);

}  // namespace KT
