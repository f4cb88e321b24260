// A moment as part of a file's name.
#pragma once

#include <chrono>
#include <string>

namespace KT {

// In UTC, to the millisecond, in characters that every file system takes: 20261121T012345.678Z.
std::string UtcStamp(std::chrono::system_clock::time_point time);

}  // namespace KT
