#include "apps/marnockctl/RecordTable.h"

#include <type_traits>
#include <utility>

#include "apps/json/ByteText.h"
#include "apps/marnockctl/TextTable.h"
#include "codec/DeviceFieldVisitors.h"

namespace KT {

namespace {

std::string CellText(const std::string& value) { return ToTerminalText(value); }
std::string CellText(bool value) { return value ? "true" : "false"; }
template <class Integer>
requires std::is_integral_v<Integer> std::string CellText(Integer value) { return std::to_string(value); }

struct Cell {
  std::string name;
  std::string text;
};

template <class Record>
std::vector<Cell> Cells(const Record& record) {
  std::vector<Cell> cells;
  ForEachField(record, [&cells](const char* name, const auto& value) { cells.push_back({name, CellText(value)}); });
  return cells;
}

}  // namespace

template <class Record>
std::string FieldLines(const Record& record) {
  std::vector<std::string> names;
  std::vector<std::string> texts;
  for (const Cell& cell : Cells(record)) {
    names.push_back(cell.name);
    texts.push_back(cell.text);
  }
  TextTable table;
  table.AddColumn(names);
  table.AddColumn(texts);
  return table.Text();
}

template <class Record>
void AddRecordColumns(TextTable& table, const std::vector<Record>& records) {
  const std::vector<Cell> defaults = Cells(Record{});
  std::vector<std::vector<Cell>> rows;
  rows.reserve(records.size());
  for (const Record& record : records) {
    rows.push_back(Cells(record));
  }
  for (std::size_t column = 0; column < defaults.size(); ++column) {
    std::vector<std::string> cells{defaults[column].name};
    bool telling = false;
    for (const auto& row : rows) {
      cells.push_back(row[column].text);
      telling = telling || row[column].text != defaults[column].text;
    }
    if (telling) {
      table.AddColumn(cells);
    }
  }
}

template <class Record>
std::string Table(const std::vector<Record>& records) {
  TextTable table;
  if (!records.empty()) {
    AddRecordColumns(table, records);
  }
  return table.Text();
}

template std::string FieldLines(const BluetoothDeviceSummary&);
template std::string FieldLines(const CurrZentapDeviceInfo&);
template void AddRecordColumns(TextTable&, const std::vector<BluetoothDeviceSummary>&);
template void AddRecordColumns(TextTable&, const std::vector<CurrZentapDeviceInfo>&);
template std::string Table(const std::vector<BluetoothDeviceSummary>&);
template std::string Table(const std::vector<CurrZentapDeviceInfo>&);

}  // namespace KT
