#include <windows.h>

#include <cstdint>
#include <ratio>

#include "platform/ThreadProcessorTime.h"

namespace platform {

namespace {

using FileTimeUnits = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;

FileTimeUnits Duration(const FILETIME& time) {
  ULARGE_INTEGER units{};
  units.LowPart = time.dwLowDateTime;
  units.HighPart = time.dwHighDateTime;
  return FileTimeUnits(static_cast<std::int64_t>(units.QuadPart));
}

}  // namespace

std::chrono::nanoseconds ThreadProcessorTime() {
  FILETIME created{};
  FILETIME ended{};
  FILETIME kernel{};
  FILETIME user{};
  GetThreadTimes(GetCurrentThread(), &created, &ended, &kernel, &user);
  return Duration(kernel) + Duration(user);
}

}  // namespace platform
