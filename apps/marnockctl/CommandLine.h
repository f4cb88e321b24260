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
  std::string pkgName = "marnockctl";        // who asks; logged by the service and echoed in most answers
  bool json = false;
};

// The commands. `Family` is one of those in DeviceFamily.h.
template <class Family>
struct DeviceSet {
  std::string sumId;
  std::string file;                 // a JSON record; "-" for standard input, empty for none
  std::vector<std::string> fields;  // NAME=VALUE, on top of the file
  bool force = false;
};
template <class Family>
struct DeviceGet {
  std::string sumId;
};
template <class Family>
struct DeviceList {};
template <class Family>
struct DeviceDelete {
  std::string sumId;
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

struct HostStatus {};

// The database files on this machine.
struct StoreCheck {};
struct StoreRepair {
  bool dryRun = false;  // only tell what would be done
};
struct StoreShow {
  std::string file;  // "peer", "current" or "trusted"; a file's name in the database folder; or a path
};

struct TrustedFamily;
struct CurrentFamily;

using Command = std::variant<DeviceSet<TrustedFamily>, DeviceGet<TrustedFamily>, DeviceList<TrustedFamily>,
                             DeviceDelete<TrustedFamily>, DeviceSet<CurrentFamily>, DeviceGet<CurrentFamily>,
                             DeviceList<CurrentFamily>, DeviceDelete<CurrentFamily>, PeerSet, PeerGet, PeerDelete,
                             HostStatus, StoreCheck, StoreRepair, StoreShow>;

struct Invocation {
  GlobalOptions options;
  Command command;
};

// Parses `arguments` (UTF-8, the program's name first). Nothing when the program is to end at once, with `status`:
// help was asked for (printed on `out`) or the command is wrong (told on `err`).
std::optional<Invocation> ParseCommandLine(std::vector<std::string> arguments, std::ostream& out, std::ostream& err,
                                           ExitStatus& status);

}  // namespace KT
