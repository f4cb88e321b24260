// How much a thread has worked, as opposed to how long it has been there.
#pragma once

#include <chrono>

namespace platform {

// The processor time that the calling thread has used so far. It stands still while the thread waits, is suspended or
// does not get a processor. Windows counts it in clock ticks of up to 16 ms.
std::chrono::nanoseconds ThreadProcessorTime();

}  // namespace platform
