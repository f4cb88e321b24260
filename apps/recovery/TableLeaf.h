// Rows on one page of a database, without SQLite, which reads nothing of a file whose other pages are damaged.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace KT {

struct SqlBlob {
  std::string bytes;
};
using SqlValue = std::variant<std::monostate, std::int64_t, double, std::string, SqlBlob>;  // first: NULL

struct LeafRow {
  std::int64_t rowId = 0;
  std::vector<SqlValue> values;  // as stored: NULL where the column stands for the row id
};

// How a database is cut into pages.
struct PageLayout {
  std::size_t pageBytes = 0;      // a power of two from 512 to 65,536
  std::size_t reservedBytes = 0;  // at the end of each page, 0 to 255
};

// The rows on page `number` (from 1) of `database`, if that is a leaf of some table. Whatever does not look like a row,
// its overflow pages included, is left out; no byte outside of `database` is read. `budgetBytes` goes down by the size
// of each row, and rows that it is too small for are left out: begun with the size of the database it is enough for all
// its rows, unless they overlap.
std::vector<LeafRow> RowsOfLeaf(std::string_view database, const PageLayout& layout, std::size_t number,
                                std::size_t& budgetBytes);

}  // namespace KT
