// Device records for a reader at a terminal.
#pragma once

#include <string>
#include <vector>

namespace KT {

// One field a line, names padded to one width. No newline at the end.
template <class Record>
std::string FieldLines(const Record& record);

// A line of names and a line a record. Columns in which every record holds the default are left out, so that what
// tells the devices apart fits a screen. No newline at the end; empty for an empty list.
template <class Record>
std::string Table(const std::vector<Record>& records);

}  // namespace KT
