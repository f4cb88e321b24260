// Windows only: running under the service manager.
#pragma once

#include <functional>
#include <optional>

#include "platform/program/RunProgram.h"

namespace platform {

// Runs `body` as the one service of this process and returns what it returned once the service has stopped; empty at
// once, and nothing run, when the process was not started by the service manager. Reported: that it starts, with Wait
// that it runs, with a stop control that it stops, and the end, with the result as the service's own error code where
// that is not 0.
std::optional<int> RunAsService(const std::function<int(StopSignal&)>& body);

}  // namespace platform
