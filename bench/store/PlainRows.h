// The three tables for PlainStore: SQL text, binding and reading written out by hand, columns by their position.
#pragma once

#include <sqlite3.h>

#include <cstddef>
#include <string>

#include "codec/BluetoothDeviceSummary.h"
#include "codec/CurrZentapDeviceInfo.h"

namespace bench {

struct PlainTable {
  const char* name;
  const char* keyColumn;
  const char* fileName;  // of the store's engine
  const char* createText;
  const char* insertText;
};

// `Value` is what a row holds besides its key: CurrZentapDeviceInfo, BluetoothDeviceSummary, or a peer's sumId.
template <class Value>
const PlainTable& PlainTableOf();
template <>
const PlainTable& PlainTableOf<CurrZentapDeviceInfo>();
template <>
const PlainTable& PlainTableOf<BluetoothDeviceSummary>();
template <>
const PlainTable& PlainTableOf<std::string>();

// Fills the parameters of the INSERT; the arguments must outlive the statement.
void BindRow(sqlite3_stmt* insert, const std::string& key, const CurrZentapDeviceInfo& device);
void BindRow(sqlite3_stmt* insert, const std::string& key, const BluetoothDeviceSummary& device);
void BindRow(sqlite3_stmt* insert, const std::string& key, const std::string& sumId);

// Reads the current row of a SELECT *.
void ReadRow(sqlite3_stmt* row, CurrZentapDeviceInfo& device);
void ReadRow(sqlite3_stmt* row, BluetoothDeviceSummary& device);
void ReadRow(sqlite3_stmt* row, std::string& sumId);

// The bytes of a row's values: texts without terminators, integers at their full width, the id not counted.
std::size_t RowBytes(const std::string& key, const CurrZentapDeviceInfo& device);
std::size_t RowBytes(const std::string& key, const BluetoothDeviceSummary& device);
std::size_t RowBytes(const std::string& key, const std::string& sumId);

}  // namespace bench
