// What was asked for on the command line.
#pragma once

#include <chrono>
#include <iosfwd>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "apps/marnockctl/ExitStatus.h"

namespace KT {

struct GlobalOptions {
  std::chrono::milliseconds timeout{5'000};  // for the whole call
  std::string pkgName = "marnockctl";        // who asks; echoed by some answers and logged
  bool json = false;
};

struct PeerSet {
  std::string udId;
  std::string sumId;
};
struct PeerGet {
  std::string udId;
};
struct PeerDelete {
  std::string udId;
};

using Command = std::variant<PeerSet, PeerGet, PeerDelete>;

struct Invocation {
  GlobalOptions options;
  Command command;
};

// Parses `arguments` (UTF-8, the program's name first). Nothing when the program is to end at once, with `status`:
// help was asked for (printed on `out`) or the command is wrong (told on `err`).
std::optional<Invocation> ParseCommandLine(std::vector<std::string> arguments, std::ostream& out, std::ostream& err,
                                           ExitStatus& status);

}  // namespace KT
