// Device records for a reader at a terminal.
#pragma once

#include <string>
#include <vector>

#include "apps/marnockctl/TextTable.h"

namespace KT {

// One field a line, names padded to one width. No newline at the end.
template <class Record>
std::string FieldLines(const Record& record);

// Adds the columns of the records' fields to a table: a name and a cell a record. Those in which every record holds the
// default are left out, so that what tells the devices apart fits a screen.
template <class Record>
void AddRecordColumns(TextTable& table, const std::vector<Record>& records);

// A table of those columns. No newline at the end; empty for an empty list.
template <class Record>
std::string Table(const std::vector<Record>& records);

}  // namespace KT
