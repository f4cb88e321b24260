#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/logging/LogText.h"

namespace platform {
namespace {

std::string LogText(const std::wstring& text) {
  std::string line;
  AppendLogText(line, text);
  return line;
}

TEST(LogText, IsAppended) {
  std::string line = "3 ";
  AppendLogText(line, L"[KTData] text");
  EXPECT_EQ(line, "3 [KTData] text");
}

TEST(LogText, KeepsEveryPrintableAsciiCharacterTheBackslashIncluded) {
  for (wchar_t c = 0x20; c < 0x7F; ++c) {
    EXPECT_EQ(LogText(std::wstring(1, c)), std::string(1, static_cast<char>(c)));
  }
  EXPECT_EQ(LogText(L"C:\\Users\\nobody\\"), "C:\\Users\\nobody\\");
}

TEST(LogText, EscapesEveryControlCharacter) {
  const std::vector<std::pair<wchar_t, std::string>> cases = {
      {L'\0', "\\x00"},   {L'\x01', "\\x01"}, {L'\t', "\\t"},     {L'\n', "\\n"},
      {L'\v', "\\x0b"},   {L'\r', "\\r"},     {L'\x1B', "\\x1b"}, {L'\x1F', "\\x1f"},
      {L'\x7F', "\\x7f"}, {L'\x80', "\\x80"}, {L'\x85', "\\x85"}, {L'\x9F', "\\x9f"},
  };
  for (const auto& [character, expected] : cases) {
    EXPECT_EQ(LogText(L"a" + std::wstring(1, character) + L"z"), "a" + expected + "z");
  }
}

TEST(LogText, LeavesNoControlByteInAnyLine) {
  for (wchar_t c = 0; c < 0xA0; ++c) {
    for (const char byte : LogText(std::wstring(1, c))) {
      EXPECT_GE(byte, ' ') << static_cast<unsigned>(c);
      EXPECT_NE(byte, '\x7F');
    }
  }
}

TEST(LogText, EscapesSeparatorsAndBidirectionalControlsAndNotTheirNeighbours) {
  EXPECT_EQ(LogText(L"\u2027\u2028\u2029\u202a\u202e\u202f"), "\xE2\x80\xA7\\u2028\\u2029\\u202a\\u202e\xE2\x80\xAF");
  EXPECT_EQ(LogText(L"\u2065\u2066\u2069\u206a"), "\xE2\x81\xA5\\u2066\\u2069\xE2\x81\xAA");
}

TEST(LogText, IsUtf8) {
  EXPECT_EQ(LogText(L"\u00a0\u00e9\u4e2d\U0001F600"), "\xC2\xA0\xC3\xA9\xE4\xB8\xAD\xF0\x9F\x98\x80");
}

TEST(LogText, ReplacesLoneSurrogates) {
  EXPECT_EQ(LogText(std::wstring{L'a', static_cast<wchar_t>(0xD83D), L'\n'}), "a\xEF\xBF\xBD\\n");
}

}  // namespace
}  // namespace platform
