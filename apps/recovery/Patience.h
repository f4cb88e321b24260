// Trying again while another program, a virus scanner for one, is in the way for a moment.
#pragma once

#include <chrono>
#include <functional>
#include <thread>

namespace KT {

using Sleep = std::function<void(std::chrono::milliseconds)>;

// The Sleep of programs: the calling thread's.
inline void SleepFor(std::chrono::milliseconds time) { std::this_thread::sleep_for(time); }

inline constexpr int kTries = 10;
inline constexpr std::chrono::milliseconds kLongerEachTime{25};

// Calls `attempt` until it returns true, at most kTries times, and waits between two calls 25 ms longer each time: 1.1
// s in all. Returns whether it came true.
template <class Attempt>
bool TryPatiently(const Sleep& sleep, Attempt&& attempt) {
  for (int number = 1; number <= kTries; ++number) {
    if (attempt()) {
      return true;
    }
    if (number < kTries) {
      sleep(number * kLongerEachTime);
    }
  }
  return false;
}

}  // namespace KT
