// POSIX port only: Windows error numbers for what the system's calls report.
#pragma once

#include "platform/OperatingSystem.h"

namespace platform {

// The Windows number that stands for an errno value; kErrorGeneralFailure for one that has no counterpart. ENOENT
// becomes kErrorFileNotFound: only the caller can know whether it was the folder that is missing.
Dword WindowsErrorOf(int errnoValue);

}  // namespace platform
