#include "apps/marnockctl/StatusReport.h"

#include <cstdint>
#include <stdexcept>

#include "apps/json/ByteText.h"
#include "apps/marnockctl/TextTable.h"
#include "codec/Protocol.h"

namespace KT {

namespace {

// A fraction or a negative number would be converted to some count without a word.
std::uint64_t Count(const Json& object, const char* name) {
  const Json& value = object.at(name);
  if (!value.is_number_unsigned()) {
    throw std::runtime_error(std::string("\"") + name + "\" is not a whole number of 0 or more");
  }
  return value.get<std::uint64_t>();
}

std::string Number(const Json& object, const char* name) { return std::to_string(Count(object, name)); }

std::string TwoDigits(std::uint64_t value) { return (value < 10 ? "0" : "") + std::to_string(value); }

// As 3d 04:05:06.
std::string Duration(std::uint64_t seconds) {
  const std::uint64_t minutes = seconds / 60;
  const std::uint64_t hours = minutes / 60;
  return std::to_string(hours / 24) + "d " + TwoDigits(hours % 24) + ":" + TwoDigits(minutes % 60) + ":" +
         TwoDigits(seconds % 60);
}

std::string Summary(const Json& document) {
  const Json& connections = document.at("connections");
  TextTable table;
  table.AddColumn({"up", "connections", "frames routed"});
  table.AddColumn({Duration(Count(document, "uptimeSeconds")),
                   Number(connections, "now") + " now, " + Number(connections, "most") + " at most, " +
                       Number(connections, "refused") + " refused, " + Number(connections, "cutOff") + " cut off",
                   Number(document, "framesRouted")});
  return table.Text();
}

std::string SavesTable(const Json& saves) {
  std::vector<std::string> names{"table"};
  std::vector<std::string> saved{"saved"};
  std::vector<std::string> failed{"failed since"};
  for (const auto& [name, counts] : saves.items()) {
    names.push_back(ToTerminalText(name));
    saved.push_back(Number(counts, "saved"));
    failed.push_back(Number(counts, "failedSinceLastSaved"));
  }
  TextTable table;
  table.AddColumn(names);
  table.AddColumn(saved, TextTable::Align::Right);
  table.AddColumn(failed, TextTable::Align::Right);
  return table.Text();
}

std::string RequestsTable(const Json& requests) {
  TextTable table;
  table.AddColumn(Column("request", requests,
                         [](const Json& request) { return ToTerminalText(request.at("name").get<std::string>()); }));
  table.AddColumn(Column("received", requests, [](const Json& request) { return Number(request, "received"); }),
                  TextTable::Align::Right);
  for (const int code : {kResultSuccess, kResultReadOrPeerFailed, kResultTapChangeFailed}) {
    const std::string result = std::to_string(code);
    table.AddColumn(Column(result, requests,
                           [&result](const Json& request) { return Number(request.at("results"), result.c_str()); }),
                    TextTable::Align::Right);
  }
  table.AddColumn(Column("unanswered", requests, [](const Json& request) { return Number(request, "unanswered"); }),
                  TextTable::Align::Right);
  return table.Text();
}

std::vector<std::string> Warnings(const Json& saves) {
  std::vector<std::string> warnings;
  for (const auto& [name, counts] : saves.items()) {
    if (Count(counts, "failedSinceLastSaved") > 0) {
      warnings.push_back("changes of the " + ToTerminalText(name) +
                         " table may not be on the disk: its last save failed; the host's log says why");
    }
  }
  return warnings;
}

}  // namespace

StatusReport ReportStatus(const Json& document) {
  const Json& saves = document.at("saves");
  return {Summary(document) + "\n\n" + SavesTable(saves) + "\n\n" + RequestsTable(document.at("requests")),
          Warnings(saves)};
}

}  // namespace KT
