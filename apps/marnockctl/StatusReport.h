// A host's status for a reader at a terminal.
#pragma once

#include <string>
#include <vector>

#include "apps/json/JsonDocument.h"

namespace KT {

struct StatusReport {
  std::string text;                   // lines without a newline at the end
  std::vector<std::string> warnings;  // one for each table with changes that are not on the disk
};

// From the document of docs/status.md. Throws std::exception where it lacks a member or has one of another kind;
// members that are not known are left alone.
StatusReport ReportStatus(const Json& document);

}  // namespace KT
