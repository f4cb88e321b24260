#include "platform/logging/QxLogger.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <ctime>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "platform/text/PlenixBase.h"
#include "tests/platform/ScratchMachine.h"

namespace {

void Log(QxLogLevel level, const std::wstring& text) {
  std::wostringstream line;
  line << text;
  QxLogger::GetInstance().Log(level, line);
}

std::vector<std::string> Lines(const std::string& content) {
  std::vector<std::string> lines;
  std::istringstream stream(content);
  for (std::string line; std::getline(stream, line);) {
    lines.push_back(line);
  }
  return lines;
}

// Everything before the text of a line: "2026-11-21T01:23:45.678Z 3 ".
constexpr std::size_t kPrefixLength = 27;

class LogFile : public testing::Test {
 protected:
  ~LogFile() override { QxLogger::GetInstance().UseStandardError(); }

  void Open(const std::wstring& name) {
    const std::u8string path = machine_.RealPath(name).u8string();
    QxLogger::GetInstance().OpenFile({path.begin(), path.end()});
  }

  testing_support::ScratchMachine machine_;
};

TEST_F(LogFile, HoldsTimeLevelAndTextOfEachLine) {
  Open(L"a.log");
  Log(QxLogLevel::Progress, L"[KTData] Init Marnock finished.(KT::Marnock::Init)");
  Log(QxLogLevel::Failure, L"");
  const std::string content = machine_.ReadFile(L"a.log");
  const std::regex expected(
      R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z 3 \[KTData\] Init Marnock finished\.\(KT::Marnock::Init\))"
      "\n"
      R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z 4 )"
      "\n");
  EXPECT_TRUE(std::regex_match(content, expected)) << content;
}

TEST_F(LogFile, HasTheTimeInUtc) {
  Open(L"a.log");
  const std::time_t before = std::time(nullptr);
  Log(QxLogLevel::Progress, L"now");
  const std::time_t after = std::time(nullptr);
  const auto text = [](std::time_t time) {
    char buffer[32];
    // The one use of gmtime in this process: its shared result is nobody else's.
    return std::string(buffer, std::strftime(buffer, sizeof buffer, "%Y-%m-%dT%H:%M:%S", std::gmtime(&time)));
  };
  const std::string logged = machine_.ReadFile(L"a.log").substr(0, 19);
  EXPECT_GE(logged, text(before));
  EXPECT_LE(logged, text(after));
}

TEST_F(LogFile, IsWrittenBeforeLogReturnsAndAppendedTo) {
  machine_.WriteFile(L"a.log", "old\n");
  Open(L"a.log");
  Log(QxLogLevel::Progress, L"new");
  const std::vector<std::string> lines = Lines(machine_.ReadFile(L"a.log"));
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0], "old");
  EXPECT_EQ(lines[1].substr(kPrefixLength), "new");
}

TEST_F(LogFile, KeepsForgedLinesInOneLine) {
  Open(L"a.log");
  Log(QxLogLevel::Progress, L"a\r\n2026-11-21T01:23:45.678Z 4 forged\u2028\u0085\x1b[2J");
  const std::string content = machine_.ReadFile(L"a.log");
  EXPECT_EQ(content.substr(kPrefixLength), "a\\r\\n2026-11-21T01:23:45.678Z 4 forged\\u2028\\x85\\x1b[2J\n");
}

TEST_F(LogFile, TakesPatternCharactersForText) {
  Open(L"a.log");
  Log(QxLogLevel::Progress, L"%Y {} {0} %v");
  EXPECT_EQ(machine_.ReadFile(L"a.log").substr(kPrefixLength), "%Y {} {0} %v\n");
}

TEST_F(LogFile, MayHaveANameBeyondAscii) {
  const std::wstring name = L"\u00e9\u4e2d\U0001F600.log";
  Open(name);
  Log(QxLogLevel::Progress, L"text");
  EXPECT_EQ(machine_.ReadFile(name).substr(kPrefixLength), "text\n");
}

TEST_F(LogFile, ThatCannotBeOpenedIsNamedAndLeavesTheOneBefore) {
  Open(L"a.log");
  machine_.WriteFile(L"file", "");
  try {
    Open(L"file\\b.log");
    FAIL() << "opened below a file";
  } catch (const std::runtime_error& error) {
    EXPECT_NE(std::string(error.what()).find("b.log"), std::string::npos) << error.what();
  }
  Log(QxLogLevel::Progress, L"text");
  EXPECT_EQ(machine_.ReadFile(L"a.log").substr(kPrefixLength), "text\n");
}

TEST_F(LogFile, IsLeftWhenLinesGoToStandardErrorAgain) {
  Open(L"a.log");
  QxLogger::GetInstance().UseStandardError();
  EXPECT_TRUE(std::filesystem::remove(machine_.RealPath(L"a.log")));
}

constexpr std::uintmax_t kMebibyte = 1024 * 1024;

TEST_F(LogFile, IsRotatedByTheFirstLineThatNoLongerFits) {
  Open(L"a.log");
  const std::wstring mebibyteLine(kMebibyte - kPrefixLength - 1, L'x');
  for (int i = 0; i < 10; ++i) {
    Log(QxLogLevel::Progress, mebibyteLine);
  }
  EXPECT_EQ(std::filesystem::file_size(machine_.RealPath(L"a.log")), 10 * kMebibyte);
  EXPECT_FALSE(std::filesystem::exists(machine_.RealPath(L"a.1.log")));
  Log(QxLogLevel::Progress, L"next");
  EXPECT_EQ(machine_.ReadFile(L"a.log").substr(kPrefixLength), "next\n");
  EXPECT_EQ(std::filesystem::file_size(machine_.RealPath(L"a.1.log")), 10 * kMebibyte);
}

TEST_F(LogFile, IsRotatedThroughFiveOlderOnes) {
  for (const auto* const number : {L"1", L"2", L"3", L"4", L"5"}) {
    machine_.WriteFile(L"a." + std::wstring(number) + L".log", PlenixBase::UnicodeToUTF8(number));
  }
  machine_.WriteFile(L"a.log", std::string(10 * kMebibyte, 'x'));
  Open(L"a.log");
  Log(QxLogLevel::Progress, L"next");
  EXPECT_EQ(machine_.ReadFile(L"a.log").substr(kPrefixLength), "next\n");
  EXPECT_EQ(std::filesystem::file_size(machine_.RealPath(L"a.1.log")), 10 * kMebibyte);
  EXPECT_EQ(machine_.ReadFile(L"a.2.log"), "1");
  EXPECT_EQ(machine_.ReadFile(L"a.5.log"), "4");
  EXPECT_FALSE(std::filesystem::exists(machine_.RealPath(L"a.6.log")));
}

TEST_F(LogFile, HoldsWholeLinesInOrderOfTimeFromManyThreads) {
  Open(L"a.log");
  constexpr std::size_t kThreads = 4;
  constexpr std::size_t kLinesEach = 500;
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < kThreads; ++i) {
    threads.emplace_back([i] {
      for (std::size_t n = 0; n < kLinesEach; ++n) {
        Log(QxLogLevel::Progress, std::wstring(50 + i, static_cast<wchar_t>(L'a' + i)));
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  const std::vector<std::string> lines = Lines(machine_.ReadFile(L"a.log"));
  EXPECT_EQ(lines.size(), kThreads * kLinesEach);
  std::string time;
  for (const std::string& line : lines) {
    const std::string text = line.substr(kPrefixLength);
    ASSERT_EQ(text, std::string(50 + static_cast<std::size_t>(text[0] - 'a'), text[0]));
    ASSERT_GE(line.substr(0, kPrefixLength), time);
    time = line.substr(0, kPrefixLength);
  }
}

TEST_F(LogFile, MayBeExchangedWhileOthersLog) {
  Open(L"a.log");
  std::atomic<bool> done{false};
  std::thread other([&] {
    while (!done) {
      Log(QxLogLevel::Progress, L"text");
    }
  });
  for (int i = 0; i < 20; ++i) {
    Open(i % 2 == 0 ? L"b.log" : L"a.log");
  }
  done = true;
  other.join();
  for (const auto* const name : {L"a.log", L"b.log"}) {
    for (const std::string& line : Lines(machine_.ReadFile(name))) {
      ASSERT_EQ(line.substr(kPrefixLength), "text");
    }
  }
}

TEST_F(LogFile, IsObservedUnescaped) {
  Open(L"a.log");
  std::vector<std::pair<QxLogLevel, std::wstring>> seen;
  QxLogger::Observer before = QxLogger::GetInstance().SetObserver(
      [&](QxLogLevel level, const std::wstring& text) { seen.emplace_back(level, text); });
  Log(QxLogLevel::Failure, L"a\n\u00e9");
  const QxLogger::Observer mine = QxLogger::GetInstance().SetObserver(std::move(before));
  Log(QxLogLevel::Progress, L"unseen");
  ASSERT_EQ(seen.size(), 1U);
  EXPECT_EQ(seen[0].first, QxLogLevel::Failure);
  EXPECT_EQ(seen[0].second, L"a\n\u00e9");
  EXPECT_TRUE(mine);
}

TEST(QxLoggerInstance, IsAlwaysTheSame) { EXPECT_EQ(&QxLogger::GetInstance(), &QxLogger::GetInstance()); }

}  // namespace
