// A device record as a row of its table: the SQL text, binding and reading that follow from the field tables.
#pragma once

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Exception.h>
#include <SQLiteCpp/Statement.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <ostream>
#include <string>
#include <type_traits>

#include "codec/DeviceFieldVisitors.h"

namespace KT {

namespace internal {

template <class Value>
inline constexpr const char* kSqlType = std::is_same_v<Value, std::string> ? "TEXT" : "INTEGER";

// The text must outlive the statement.
inline void BindValue(SQLite::Statement& statement, int position, const std::string& value) {
  statement.bindNoCopy(position, value);
}
inline void BindValue(SQLite::Statement& statement, int position, bool value) {
  statement.bind(position, static_cast<std::int32_t>(value));
}
template <class Integer>
void BindValue(SQLite::Statement& statement, int position, Integer value) {
  statement.bind(position, value);
}

inline void ReadValue(const SQLite::Column& column, std::string& value) { value = column.getString(); }
inline void ReadValue(const SQLite::Column& column, bool& value) { value = column.getInt64() != 0; }
inline void ReadValue(const SQLite::Column& column, std::int32_t& value) { value = column.getInt(); }
inline void ReadValue(const SQLite::Column& column, std::uint32_t& value) { value = column.getUInt(); }
inline void ReadValue(const SQLite::Column& column, std::int64_t& value) { value = column.getInt64(); }

}  // namespace internal

// Appends "(id INTEGER PRIMARY KEY AUTOINCREMENT, sumId TEXT NOT NULL, ... NOT NULL);".
template <DeviceTable table>
void AppendDeviceColumnDefs(std::ostream& statement) {
  statement << "(id INTEGER PRIMARY KEY AUTOINCREMENT, sumId TEXT NOT NULL";
  ForEachColumn<table>([&](const auto& field) {
    using Value = typename std::remove_cvref_t<decltype(field)>::Value;
    statement << ", " << field.name << " " << internal::kSqlType<Value> << " NOT NULL";
  });
  statement << ");";
}

// Appends " (sumId, ...) VALUES(? , ... , ?)".
template <DeviceTable table>
void AppendDeviceInsertColumns(std::ostream& statement) {
  statement << " (sumId";
  ForEachColumn<table>([&](const auto& field) { statement << ", " << field.name; });
  statement << ") VALUES(?";
  ForEachColumn<table>([&](const auto&) { statement << " , ?"; });
  statement << ")";
}

// Binds the parameters of that INSERT. The arguments must outlive the statement's execution.
template <DeviceTable table>
void BindDeviceRow(SQLite::Statement& insert, const std::string& sumId, const TableRecord<table>& info) {
  internal::BindValue(insert, kSumIdColumn, sumId);
  int position = kSumIdColumn;
  ForEachColumn<table>(info, [&](const char*, const auto& value) { internal::BindValue(insert, ++position, value); });
}

// Reads rows of one SELECT. Columns are found by their names, once for all rows: a file that was loaded may have them
// in another order, or more of them.
template <DeviceTable table>
class DeviceRowReader {
 public:
  // `select` must outlive the reader.
  explicit DeviceRowReader(const SQLite::Statement& select) : select_(select) {
    int expected = kSumIdColumn + 1;
    std::size_t field = 0;
    ForEachColumn<table>([&](const auto& column) { positions_[field++] = Find(column.name, expected++); });
  }

  // The record in the statement's current row. Throws SQLite::Exception when a column is missing.
  TableRecord<table> Read() const {
    TableRecord<table> info;
    std::size_t field = 0;
    ForEachColumn<table>(info, [&](const char*, auto& value) {
      const int position = positions_[field++];
      if (position == kMissing) {
        throw SQLite::Exception("Unknown column name.");  // as Statement::getColumn says of a name
      }
      internal::ReadValue(select_.getColumn(position), value);
    });
    return info;
  }

 private:
  static constexpr int kMissing = -1;

  bool IsNamed(int position, const char* name) const { return std::strcmp(select_.getColumnName(position), name) == 0; }

  // Tables that this engine made have every column where it is expected, which makes the search short.
  int Find(const char* name, int expected) const {
    const int count = select_.getColumnCount();
    if (expected < count && IsNamed(expected, name)) {
      return expected;
    }
    for (int position = 0; position < count; ++position) {
      if (IsNamed(position, name)) {
        return position;
      }
    }
    return kMissing;
  }

  const SQLite::Statement& select_;
  std::array<int, kStoredFieldCount<table>> positions_{};
};

}  // namespace KT
