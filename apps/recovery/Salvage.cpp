#include "apps/recovery/Salvage.h"

#include <SQLiteCpp/Statement.h>

#include <algorithm>
#include <bit>
#include <optional>
#include <string_view>
#include <type_traits>
#include <vector>

#include "apps/recovery/BigEndian.h"
#include "apps/recovery/TableLeaf.h"

namespace KT {

namespace {

constexpr std::string_view kMagic("SQLite format 3\0", 16);
// Places in the header of a database.
constexpr std::size_t kHeaderBytes = 100;
constexpr std::size_t kReservedBytes = 20;
constexpr std::size_t kFirstFreePage = 32;

constexpr std::size_t kSmallestPage = 512;
constexpr std::size_t kLargestPage = 65536;
constexpr std::size_t kUsualPage = 4096;

// Nothing when there is no header, or none that makes sense.
std::optional<PageLayout> LayoutFromHeader(std::string_view bytes) {
  if (bytes.size() < kHeaderBytes || !bytes.starts_with(kMagic)) {
    return std::nullopt;
  }
  const PageLayout layout{StatedPageBytes(bytes), BigEndian(bytes.substr(kReservedBytes, 1))};
  const bool makesSense = layout.pageBytes >= kSmallestPage && std::has_single_bit(layout.pageBytes);
  return makesSense ? std::optional(layout) : std::nullopt;
}

// Free pages: a list of trunks, each with the next trunk's number, a count and the numbers of so many further pages.
std::vector<bool> FreePages(std::string_view bytes, std::size_t pageBytes) {
  const std::size_t pages = bytes.size() / pageBytes;
  std::vector<bool> free(pages + 1);
  std::uint64_t trunk = BigEndian(bytes.substr(kFirstFreePage, 4));
  while (trunk >= 1 && trunk <= pages && !free[trunk]) {
    free[trunk] = true;
    const std::string_view page = bytes.substr((trunk - 1) * pageBytes, pageBytes);
    const std::uint64_t count = std::min<std::uint64_t>(BigEndian(page.substr(4, 4)), pageBytes / 4 - 2);
    for (std::size_t i = 0; i < count; ++i) {
      const std::uint64_t number = BigEndian(page.substr(8 + 4 * i, 4));
      if (number <= pages) {
        free[number] = true;
      }
    }
    trunk = BigEndian(page.substr(0, 4));
  }
  return free;
}

// The first column is the row id, which a record holds as NULL; all others are NOT NULL.
bool BelongsTo(const StoreFile& file, const LeafRow& row) {
  const auto isNull = [](const SqlValue& value) { return std::holds_alternative<std::monostate>(value); };
  return row.values.size() == file.columns.size() && isNull(row.values.front()) &&
         std::none_of(row.values.begin() + 1, row.values.end(), isNull);
}

std::vector<LeafRow> RowsIn(std::string_view bytes, const PageLayout& layout, const std::vector<bool>& free,
                            const StoreFile& file) {
  std::vector<LeafRow> found;
  std::size_t budgetBytes = bytes.size();
  for (std::size_t number = 1; number <= bytes.size() / layout.pageBytes; ++number) {
    if (number < free.size() && free[number]) {
      continue;
    }
    for (LeafRow& row : RowsOfLeaf(bytes, layout, number, budgetBytes)) {
      if (BelongsTo(file, row)) {
        found.push_back(std::move(row));
      }
    }
  }
  return found;
}

std::vector<LeafRow> FindRows(const StoreFile& file, const std::string& bytes) {
  if (const auto layout = LayoutFromHeader(bytes); layout.has_value()) {
    return RowsIn(bytes, *layout, FreePages(bytes, layout->pageBytes), file);
  }
  // The right size of a page is the one with which the most rows make sense.
  std::vector<LeafRow> best = RowsIn(bytes, {kUsualPage, 0}, {}, file);
  for (std::size_t size = kSmallestPage; size <= kLargestPage; size *= 2) {
    if (auto rows = RowsIn(bytes, {size, 0}, {}, file); rows.size() > best.size()) {
      best = std::move(rows);
    }
  }
  return best;
}

std::string Joined(const std::vector<std::string>& names, const char* separator) {
  std::string text;
  for (const std::string& name : names) {
    text += (text.empty() ? "" : separator) + name;
  }
  return text;
}

void Bind(SQLite::Statement& insert, int position, const SqlValue& value) {
  std::visit(
      [&](const auto& held) {
        using Held = std::remove_cvref_t<decltype(held)>;
        if constexpr (std::is_same_v<Held, std::monostate>) {
          insert.bind(position);
        } else if constexpr (std::is_same_v<Held, SqlBlob>) {
          insert.bind(position, held.bytes.data(), static_cast<int>(held.bytes.size()));
        } else {
          insert.bind(position, held);
        }
      },
      value);
}

}  // namespace

SalvagedTable Salvage(const StoreFile& file, const std::string& bytes) {
  std::vector<LeafRow> rows = FindRows(file, bytes);
  std::stable_sort(rows.begin(), rows.end(), [](const LeafRow& a, const LeafRow& b) { return a.rowId < b.rowId; });
  SalvagedTable table;
  table.database = std::make_unique<SQLite::Database>(":memory:", SQLite::OPEN_READWRITE);
  table.database->exec(std::string("CREATE TABLE ") + file.tableName + "(" + Joined(file.columns, ", ") + ")");
  SQLite::Statement insert(*table.database, std::string("INSERT INTO ") + file.tableName + " VALUES (" +
                                                Joined(std::vector<std::string>(file.columns.size(), "?"), ", ") + ")");
  for (const LeafRow& row : rows) {
    insert.bind(1, row.rowId);
    for (std::size_t column = 1; column < row.values.size(); ++column) {
      Bind(insert, static_cast<int>(column) + 1, row.values[column]);
    }
    insert.exec();
    insert.reset();
  }
  table.rows = rows.size();
  return table;
}

}  // namespace KT
