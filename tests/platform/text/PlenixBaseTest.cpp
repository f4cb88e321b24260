#include "platform/text/PlenixBase.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace std::string_literals;

std::wstring Wide(std::initializer_list<char32_t> codePoints) {
  std::wstring result;
  for (const char32_t c : codePoints) {
    if (sizeof(wchar_t) == 2 && c >= 0x10000) {
      result += static_cast<wchar_t>(0xD7C0 + (c >> 10));
      result += static_cast<wchar_t>(0xDC00 + (c & 0x3FF));
    } else {
      result += static_cast<wchar_t>(c);
    }
  }
  return result;
}

std::wstring Replacements(std::size_t count) { return std::wstring(count, L'\uFFFD'); }

struct Spelling {
  std::string utf8;
  std::wstring wide;
};

// The first and last code point of each length in UTF-8, the neighbours of the surrogates, and noncharacters.
const std::vector<Spelling>& Spellings() {
  static const std::vector<Spelling> spellings = {
      {"", L""},
      {"plain \\ text\n", L"plain \\ text\n"},
      {"\x7F", Wide({0x7F})},
      {"\xC2\x80", Wide({0x80})},
      {"\xDF\xBF", Wide({0x7FF})},
      {"\xE0\xA0\x80", Wide({0x800})},
      {"\xED\x9F\xBF", Wide({0xD7FF})},
      {"\xEE\x80\x80", Wide({0xE000})},
      {"\xEF\xBF\xBD", Wide({0xFFFD})},
      {"\xEF\xBF\xBE\xEF\xBF\xBF", Wide({0xFFFE, 0xFFFF})},
      {"\xEF\xBB\xBF", Wide({0xFEFF})},
      {"\xF0\x90\x80\x80", Wide({0x10000})},
      {"\xF0\x9F\x98\x80", Wide({0x1F600})},
      {"\xF4\x8F\xBF\xBF", Wide({0x10FFFF})},
      {"a\0b\0"s, L"a\0b\0"s},
      {"\xC3\xA9\xE4\xB8\xAD\xF0\x9F\x98\x80z", Wide({0xE9, 0x4E2D, 0x1F600, 'z'})},
  };
  return spellings;
}

TEST(Utf8ToUnicode, IsExactOnWellFormedText) {
  for (const Spelling& each : Spellings()) {
    EXPECT_EQ(PlenixBase::UTF8ToUnicode(each.utf8), each.wide) << testing::PrintToString(each.utf8);
  }
}

TEST(UnicodeToUtf8, IsExactOnWellFormedText) {
  for (const Spelling& each : Spellings()) {
    EXPECT_EQ(PlenixBase::UnicodeToUTF8(each.wide), each.utf8);
  }
}

TEST(PlenixBase, TakesEveryCodePointThereAndBack) {
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    if (c == 0xD800) {
      c = 0xE000;
    }
    const std::wstring wide = Wide({c});
    ASSERT_EQ(PlenixBase::UTF8ToUnicode(PlenixBase::UnicodeToUTF8(wide)), wide) << static_cast<unsigned>(c);
  }
}

// What is ill-formed, between two letters, and the number of replacement characters that it becomes.
TEST(Utf8ToUnicode, ReplacesEachMaximalSubpartOfIllFormedText) {
  const std::vector<std::pair<std::string, std::size_t>> cases = {
      {"\x80", 1},  // a continuation byte alone
      {"\xBF\xBF", 2},
      {"\xC0\x80", 2},  // overlong forms of U+0000, U+007F, U+07FF and U+FFFF
      {"\xC1\xBF", 2},
      {"\xE0\x9F\xBF", 3},
      {"\xF0\x8F\xBF\xBF", 4},
      {"\xED\xA0\x80", 3},  // surrogates, alone and as a pair
      {"\xED\xBF\xBF", 3},
      {"\xED\xA0\xBD\xED\xB8\x80", 6},
      {"\xF4\x90\x80\x80", 4},  // U+110000
      {"\xF5\x80\x80\x80", 4},
      {"\xF8\x88\x80\x80\x80", 5},
      {"\xFE\xFF", 2},
      {"\xC3", 1},  // truncated
      {"\xE4\xB8", 1},
      {"\xF0\x9F\x98", 1},
      {"\xF0\x9F", 1},
      {"\xF1\x80\xE1\x80\xC2", 3},  // each truncated by the next
      {"\xE4\xB8\xC3", 2},
  };
  for (const auto& [bytes, count] : cases) {
    EXPECT_EQ(PlenixBase::UTF8ToUnicode("a" + bytes + "z"), L"a" + Replacements(count) + L"z")
        << testing::PrintToString(bytes);
    EXPECT_EQ(PlenixBase::UTF8ToUnicode(bytes), Replacements(count)) << testing::PrintToString(bytes);
  }
}

TEST(Utf8ToUnicode, ResumesWithTheByteThatEndedATruncatedSequence) {
  EXPECT_EQ(PlenixBase::UTF8ToUnicode("\xF0\x9F\xC3\xA9"), L"\uFFFD\u00e9");
  EXPECT_EQ(PlenixBase::UTF8ToUnicode("\xE4\xB8\xF0\x9F\x98\x80"), Wide({0xFFFD, 0x1F600}));
}

TEST(UnicodeToUtf8, ReplacesLoneSurrogates) {
  const auto unit = [](unsigned value) { return std::wstring(1, static_cast<wchar_t>(value)); };
  for (const unsigned value : {0xD800U, 0xDBFFU, 0xDC00U, 0xDFFFU}) {
    EXPECT_EQ(PlenixBase::UnicodeToUTF8(unit(value)), "\xEF\xBF\xBD");
    EXPECT_EQ(PlenixBase::UnicodeToUTF8(L"a" + unit(value) + L"z"), "a\xEF\xBF\xBDz");
  }
  EXPECT_EQ(PlenixBase::UnicodeToUTF8(unit(0xDE00) + unit(0xD83D)), "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(UnicodeToUtf8, TakesAPairOfSurrogatesForOneCharacterOnlyInUtf16) {
  const std::wstring pair = {static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};
  EXPECT_EQ(PlenixBase::UnicodeToUTF8(pair), sizeof(wchar_t) == 2 ? "\xF0\x9F\x98\x80" : "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(UnicodeToUtf8, ReplacesWhatIsNoCodePointInUtf32) {
  if (sizeof(wchar_t) == 2) {
    GTEST_SKIP() << "wide text is UTF-16 here: every unit that is no surrogate is a code point";
  }
  for (const unsigned value : {0x110000U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
    EXPECT_EQ(PlenixBase::UnicodeToUTF8(std::wstring(1, static_cast<wchar_t>(value))), "\xEF\xBF\xBD");
  }
}

// The table of well-formed byte sequences in the Unicode Standard (table 3-7), row by row.
constexpr unsigned char kRows[9][8] = {
    {0x00, 0x7F},
    {0xC2, 0xDF, 0x80, 0xBF},
    {0xE0, 0xE0, 0xA0, 0xBF, 0x80, 0xBF},
    {0xE1, 0xEC, 0x80, 0xBF, 0x80, 0xBF},
    {0xED, 0xED, 0x80, 0x9F, 0x80, 0xBF},
    {0xEE, 0xEF, 0x80, 0xBF, 0x80, 0xBF},
    {0xF0, 0xF0, 0x90, 0xBF, 0x80, 0xBF, 0x80, 0xBF},
    {0xF1, 0xF3, 0x80, 0xBF, 0x80, 0xBF, 0x80, 0xBF},
    {0xF4, 0xF4, 0x80, 0x8F, 0x80, 0xBF, 0x80, 0xBF},
};

// How many leading bytes of `text` agree with a row, and whether they fill it.
std::pair<std::size_t, bool> Matching(std::string_view text, const unsigned char (&row)[8]) {
  std::size_t length = 1;
  while (length < 4 && row[2 * length] != 0) {
    ++length;
  }
  std::size_t agreed = 0;
  while (agreed < length && agreed < text.size() && static_cast<unsigned char>(text[agreed]) >= row[2 * agreed] &&
         static_cast<unsigned char>(text[agreed]) <= row[2 * agreed + 1]) {
    ++agreed;
  }
  return {agreed, agreed == length};
}

// `text` with each maximal subpart of ill-formed bytes replaced, slowly and straight from the table.
std::string Repaired(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    std::pair<std::size_t, bool> best{1, false};
    for (const auto& row : kRows) {
      best = std::max(best, Matching(text, row));
    }
    result += best.second ? std::string(text.substr(0, best.first)) : "\xEF\xBF\xBD";
    text.remove_prefix(best.first);
  }
  return result;
}

TEST(PlenixBase, AgreesWithThePlainModelOnRandomBytes) {
  std::mt19937 random(20261121);
  // Mostly bytes that can be part of a longer sequence, so that near misses are common.
  constexpr std::string_view kLikely = "\x80\x8F\x90\x9F\xA0\xBF\xC2\xDF\xE0\xE1\xED\xEF\xF0\xF1\xF4\xF5z";
  for (int round = 0; round < 100'000; ++round) {
    std::string bytes(random() % 12, '\0');
    for (char& byte : bytes) {
      byte = random() % 4 == 0 ? static_cast<char>(random()) : kLikely[random() % kLikely.size()];
    }
    ASSERT_EQ(PlenixBase::UnicodeToUTF8(PlenixBase::UTF8ToUnicode(bytes)), Repaired(bytes))
        << testing::PrintToString(bytes);
  }
}

TEST(PlenixBase, MakesRandomWideTextWellFormed) {
  std::mt19937 random(20261121);
  for (int round = 0; round < 20'000; ++round) {
    std::wstring wide(random() % 12, L'\0');
    for (wchar_t& unit : wide) {
      unit = static_cast<wchar_t>(random() % 2 == 0 ? 0xD700 + random() % 0xA00 : random());
    }
    const std::string utf8 = PlenixBase::UnicodeToUTF8(wide);
    ASSERT_EQ(Repaired(utf8), utf8);
    ASSERT_EQ(PlenixBase::UnicodeToUTF8(PlenixBase::UTF8ToUnicode(utf8)), utf8);
  }
}

}  // namespace
