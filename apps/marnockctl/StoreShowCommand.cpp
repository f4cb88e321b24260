#include "apps/marnockctl/StoreShowCommand.h"

#include <SQLiteCpp/Exception.h>

#include <string_view>

#include "apps/json/ByteText.h"
#include "apps/json/RecordJson.h"
#include "apps/marnockctl/RecordTable.h"
#include "apps/marnockctl/StoreContent.h"
#include "apps/marnockctl/TextTable.h"
#include "apps/recovery/StoreError.h"

namespace KT {

namespace {

template <class Row>
void AddKeys(TextTable& table, const std::vector<Row>& rows) {
  table.AddColumn(Column("id", rows, [](const Row& row) { return std::to_string(row.id); }), TextTable::Align::Right);
  if constexpr (requires(const Row& row) { row.udId; }) {
    table.AddColumn(Column("udId", rows, [](const Row& row) { return ToTerminalText(row.udId); }));
  }
  table.AddColumn(Column("sumId", rows, [](const Row& row) { return ToTerminalText(row.sumId); }));
}

std::string TableOf(const std::vector<StoredPeer>& rows) {
  TextTable table;
  AddKeys(table, rows);
  return table.Text();
}

template <class Record>
std::string TableOf(const std::vector<StoredDevice<Record>>& rows) {
  TextTable table;
  AddKeys(table, rows);
  std::vector<Record> records;
  records.reserve(rows.size());
  for (const auto& row : rows) {
    records.push_back(row.device);
  }
  AddRecordColumns(table, records);
  return table.Text();
}

Json JsonOf(const StoredPeer& row) {
  return Json{{"id", row.id}, {"udId", ToJson(row.udId)}, {"sumId", ToJson(row.sumId)}};
}

template <class Record>
Json JsonOf(const StoredDevice<Record>& row) {
  return Json{{"id", row.id}, {"sumId", ToJson(row.sumId)}, {"device", RecordToJson(row.device)}};
}

template <class Row>
void PrintText(const std::vector<Row>& rows, Reporter& reporter) {
  if (!rows.empty()) {
    reporter.Print(TableOf(rows));
  }
  reporter.Print(std::to_string(rows.size()) + (rows.size() == 1 ? " row" : " rows"));
}

template <class Row>
void PrintJson(const StoreContent& content, const std::vector<Row>& rows, Reporter& reporter) {
  KT::Json array = KT::Json::array();
  for (const Row& row : rows) {
    array.push_back(JsonOf(row));
  }
  reporter.Print(KT::Json{{"file", ToJson(content.path)},
                          {"table", content.file->name},
                          {"problem", content.problem.empty() ? KT::Json() : ToJson(content.problem)},
                          {"rows", std::move(array)}});
}

ExitStatus Print(const StoreContent& content, Reporter& reporter) {
  const bool isAnyRow = std::visit(
      [&](const auto& rows) {
        reporter.Json() ? PrintJson(content, rows, reporter) : PrintText(rows, reporter);
        return !rows.empty();
      },
      content.rows);
  if (content.problem.empty()) {
    return ExitStatus::Done;
  }
  reporter.Complain(
      content.path + " is damaged: " + ToTerminalText(content.problem) +
      (isAnyRow ? ". These are the rows that can still be read; some may be old" : ". No row of it can be read"));
  return isAnyRow ? ExitStatus::NeedsRepair : ExitStatus::Lost;
}

}  // namespace

ExitStatus Run(const StoreShow& command, RegistryClient&, Reporter& reporter) {
  try {
    const auto content = ReadStoreContent(command.file);
    if (!content.has_value()) {
      reporter.Complain("there is no file " + ToTerminalText(command.file));
      return ExitStatus::NotFound;
    }
    return Print(*content, reporter);
  } catch (const std::runtime_error& error) {  // StoreError and SQLite::Exception
    reporter.Complain(error.what());
    return ExitStatus::Undecided;
  }
}

}  // namespace KT
