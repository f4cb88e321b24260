#include "platform/logging/LogLine.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <utility>

namespace platform {
namespace {

class LogLine : public testing::Test {
 protected:
  LogLine() {
    QxLogger::GetInstance().SetObserver([this](QxLogLevel level, const std::wstring& text) {
      level_ = level;
      text_ = text;
    });
  }
  ~LogLine() override { QxLogger::GetInstance().SetObserver(nullptr); }

  QxLogLevel level_{};
  std::wstring text_;
};

TEST_F(LogLine, EndsWithTheFunctionInParentheses) {
  LogProgress("KT::Marnock::Init", "[KTData] Init Marnock finished.");
  EXPECT_EQ(text_, L"[KTData] Init Marnock finished.(KT::Marnock::Init)");
}

TEST_F(LogLine, HasLevelThreeForProgressAndFourForFailures) {
  LogProgress("f", "text");
  EXPECT_EQ(static_cast<int>(level_), 3);
  LogFailure("f", "text");
  EXPECT_EQ(static_cast<int>(level_), 4);
}

TEST_F(LogLine, MayHaveNoPartsAtAll) {
  LogProgress("f");
  EXPECT_EQ(text_, L"(f)");
}

TEST_F(LogLine, JoinsItsPartsWithNothingBetween) {
  LogProgress("f", "a", std::string("b"), std::wstring(L"c"), 1, "d");
  EXPECT_EQ(text_, L"abc1d(f)");
}

TEST_F(LogLine, WritesNumbersInDecimal) {
  LogProgress("f", std::numeric_limits<int>::min(), "/", std::numeric_limits<unsigned>::max(), "/",
              std::numeric_limits<std::int64_t>::min(), "/", std::numeric_limits<std::uint64_t>::max());
  EXPECT_EQ(text_, L"-2147483648/4294967295/-9223372036854775808/18446744073709551615(f)");
}

TEST_F(LogLine, TakesNarrowTextForUtf8) {
  const char* const what = "no such file: \xC3\xA9";
  LogProgress("f", std::string("\xE4\xB8\xAD\xF0\x9F\x98\x80 "), what, "!");
  EXPECT_EQ(text_, L"\u4e2d\U0001F600 no such file: \u00e9!(f)");
}

TEST_F(LogLine, ReplacesIllFormedBytesAndGoesOn) {
  LogProgress("f", std::string("a\xFFz"), "\xC3(", "b");
  EXPECT_EQ(text_, L"a\uFFFDz\uFFFD(b(f)");
}

TEST_F(LogLine, SurvivesANullPointer) {
  const char* const null = nullptr;
  LogFailure("f", "reason:", null, "!");
  EXPECT_EQ(text_, L"reason:(null)!(f)");
}

TEST_F(LogLine, KeepsZerosInsideAValue) {
  LogProgress("f", std::string("a\0b", 3));
  EXPECT_EQ(text_, std::wstring(L"a\0b(f)", 6));
}

}  // namespace
}  // namespace platform
