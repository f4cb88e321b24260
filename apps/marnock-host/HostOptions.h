// The host's command line.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace KT {

struct HostOptions {
  std::string logFile;     // UTF-8 path; empty for standard error
  std::string importFile;  // UTF-8 path; empty for no import
  bool recover = true;     // mend the database files before they are loaded
};

// Parses `arguments` (UTF-8, the program's name first). Nothing when the program is to end at once, with `status`:
// help was asked for (0, printed on `out`) or an argument is wrong (2, told on `err`).
std::optional<HostOptions> ParseHostOptions(std::vector<std::string> arguments, std::ostream& out, std::ostream& err,
                                            int& status);

}  // namespace KT
