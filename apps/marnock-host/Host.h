// The host process: one hub, one service, from the first claim to the orderly stop.
#pragma once

#include <iosfwd>

#include "apps/marnock-host/HostOptions.h"
#include "platform/program/RunProgram.h"

namespace KT {

// Serves until `stop` is signalled. Prints the line that begins with "marnock-host: ready" on `out` once requests are
// answered, and on `err` why it cannot start. Returns the exit status: 0 after an orderly stop, 1 when it could not
// start (another host runs, a database file cannot be judged or mended, the pipe or the log cannot be opened), 2 when
// the import file is wrong (nothing was started).
int RunHost(const HostOptions& options, platform::StopSignal& stop, std::ostream& out, std::ostream& err);

}  // namespace KT
