// Memory that runs out in the middle of what must happen as a whole or not at all.
#include <gtest/gtest.h>

#include <new>

#include "platform/ipc/Frame.h"
#include "platform/logging/LogLine.h"
#include "tests/support/AllocationFaults.h"
#include "tests/support/LogCapture.h"

namespace {

TEST(NoHalfSteps, AFrameIsAppendedWholeOrNotAtAll) {
  const std::string name(40, 'n');
  std::string payload(100, 'p');
  const platform::ipc::Frame frame{.code = 7, .name = name, .payload = payload};
  std::vector<char> whole;
  platform::ipc::AppendFrame(frame, whole);
  for (std::size_t room = 0; room <= whole.size(); ++room) {
    std::vector<char> out{'x'};
    out.reserve(1 + room);
    const support::AllocationFault fault(1);
    try {
      platform::ipc::AppendFrame(frame, out);
      EXPECT_EQ(out.size(), 1 + whole.size());
    } catch (const std::bad_alloc&) {
      EXPECT_EQ(out, std::vector<char>{'x'}) << room;
    }
    EXPECT_EQ(fault.Happened(), room < whole.size());
  }
}

TEST(NoHalfSteps, ALogLineIsWrittenWholeOrDroppedAndThrowsNothing) {
  int written = 0;
  bool happened = true;
  for (int nth = 1; happened; ++nth) {
    const support::LogCapture log;
    {
      const support::AllocationFault fault(nth);
      platform::LogFailure("KT::Marnock::Init", "a text that is longer than any short string ", nth);
      happened = fault.Happened();
    }
    for (const std::string& line : log.Lines()) {
      EXPECT_EQ(line, "4 a text that is longer than any short string " + std::to_string(nth) + "(KT::Marnock::Init)");
      ++written;
    }
    ASSERT_LT(nth, 1'000);
  }
  EXPECT_GT(written, 0);
}

}  // namespace
