// A device record as a row of its table: the SQL text, binding and reading that follow from the field tables.
#pragma once

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Statement.h>

#include <cstdint>
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

// The record in the statement's current row. Throws SQLite::Exception when a column is missing.
template <DeviceTable table>
TableRecord<table> ReadDeviceRow(const SQLite::Statement& row) {
  TableRecord<table> info;
  ForEachColumn<table>(info, [&](const char* name, auto& value) { internal::ReadValue(row.getColumn(name), value); });
  return info;
}

}  // namespace KT
