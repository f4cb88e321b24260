#include <ctime>

#include "platform/ThreadProcessorTime.h"

namespace platform {

std::chrono::nanoseconds ThreadProcessorTime() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

}  // namespace platform
