#include "platform/ThreadProcessorTime.h"

#include <gtest/gtest.h>

#include <thread>

namespace platform {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

TEST(ThreadProcessorTime, PassesWhileTheThreadWorks) {
  const auto start = ThreadProcessorTime();
  const auto patience = steady_clock::now() + std::chrono::seconds(10);
  while (ThreadProcessorTime() - start < milliseconds(50) && steady_clock::now() < patience) {
  }
  EXPECT_GE(ThreadProcessorTime() - start, milliseconds(50));
}

TEST(ThreadProcessorTime, StandsStillWhileTheThreadSleeps) {
  const auto start = ThreadProcessorTime();
  std::this_thread::sleep_for(milliseconds(200));
  EXPECT_LT(ThreadProcessorTime() - start, milliseconds(100));
}

TEST(ThreadProcessorTime, OfAnotherThreadDoesNotCount) {
  const auto start = ThreadProcessorTime();
  std::thread([] {
    const auto ownStart = ThreadProcessorTime();
    while (ThreadProcessorTime() - ownStart < milliseconds(150)) {
    }
  }).join();
  EXPECT_LT(ThreadProcessorTime() - start, milliseconds(100));
}

}  // namespace
}  // namespace platform
