#include "persistence/Guarded.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/LogCapture.h"

namespace {

using Lines = std::vector<std::string>;

Lines LinesAfter(const std::function<bool()>& body) {
  const support::LogCapture log;
  EXPECT_FALSE(KT::Guarded("[KTData] Failed:", "KT::Test::Run", body));
  return log.Lines();
}

TEST(Guarded, GivesTheResultOfTheBody) {
  const support::LogCapture log;
  EXPECT_TRUE(KT::Guarded("[KTData] Failed:", "KT::Test::Run", [] { return true; }));
  EXPECT_FALSE(KT::Guarded("[KTData] Failed:", "KT::Test::Run", [] { return false; }));
  EXPECT_EQ(log.Lines(), Lines{});
}

TEST(Guarded, LogsTheTextOfAnException) {
  EXPECT_EQ(LinesAfter([]() -> bool { throw std::runtime_error("disk on fire"); }),
            Lines{"4 [KTData] Failed:disk on fire(KT::Test::Run)"});
}

TEST(Guarded, LogsUnknownExceptionForAnExceptionWithoutText) {
  EXPECT_EQ(LinesAfter([]() -> bool { throw std::runtime_error(""); }),
            Lines{"4 [KTData] Failed:Unknown exception(KT::Test::Run)"});
}

TEST(Guarded, LogsUnknownExceptionForWhatIsNoException) {
  EXPECT_EQ(LinesAfter([]() -> bool { throw 42; }), Lines{"4 [KTData] Failed:Unknown exception(KT::Test::Run)"});
}

TEST(Guarded, LogsTextThatIsNotAscii) {
  EXPECT_EQ(LinesAfter([]() -> bool { throw std::runtime_error("gr\u00fc\u00dfe"); }),
            Lines{"4 [KTData] Failed:gr\u00fc\u00dfe(KT::Test::Run)"});
}

}  // namespace
