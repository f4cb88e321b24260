#include "apps/marnockctl/RecordTable.h"

#include <algorithm>
#include <type_traits>
#include <utility>

#include "apps/json/ByteText.h"
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

// How many characters a terminal shows for UTF-8 text, wide and combining ones aside.
std::size_t Width(const std::string& text) {
  return static_cast<std::size_t>(std::count_if(
      text.begin(), text.end(), [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }));
}

std::string Padded(const std::string& text, std::size_t width) {
  return text + std::string(width - std::min(width, Width(text)), ' ');
}

std::string WithoutTrailingBlanks(std::string line) {
  line.erase(line.find_last_not_of(' ') + 1);
  return line;
}

// Adds one column to the lines of a table.
void AppendColumn(std::vector<std::string>& lines, const std::vector<std::string>& cells) {
  std::size_t width = 0;
  for (const std::string& cell : cells) {
    width = std::max(width, Width(cell));
  }
  for (std::size_t row = 0; row < cells.size(); ++row) {
    lines[row] += (lines[row].empty() ? "" : "  ") + Padded(cells[row], width);
  }
}

std::string Joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) {
    text += (text.empty() ? "" : "\n") + WithoutTrailingBlanks(line);
  }
  return text;
}

}  // namespace

template <class Record>
std::string FieldLines(const Record& record) {
  const std::vector<Cell> cells = Cells(record);
  std::size_t width = 0;
  for (const Cell& cell : cells) {
    width = std::max(width, cell.name.size());
  }
  std::vector<std::string> lines;
  lines.reserve(cells.size());
  for (const Cell& cell : cells) {
    lines.push_back(Padded(cell.name, width) + "  " + cell.text);
  }
  return Joined(lines);
}

template <class Record>
std::string Table(const std::vector<Record>& records) {
  const std::vector<Cell> defaults = Cells(Record{});
  std::vector<std::vector<Cell>> rows;
  rows.reserve(records.size());
  for (const Record& record : records) {
    rows.push_back(Cells(record));
  }
  std::vector<std::string> lines(records.empty() ? 0 : records.size() + 1);
  for (std::size_t column = 0; column < defaults.size(); ++column) {
    std::vector<std::string> cells{defaults[column].name};
    bool telling = false;
    for (const auto& row : rows) {
      cells.push_back(row[column].text);
      telling = telling || row[column].text != defaults[column].text;
    }
    if (telling) {
      AppendColumn(lines, cells);
    }
  }
  return Joined(lines);
}

template std::string FieldLines(const BluetoothDeviceSummary&);
template std::string FieldLines(const CurrZentapDeviceInfo&);
template std::string Table(const std::vector<BluetoothDeviceSummary>&);
template std::string Table(const std::vector<CurrZentapDeviceInfo>&);

}  // namespace KT
