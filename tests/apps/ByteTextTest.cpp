// Unchecked bytes as JSON and as text for a terminal.
#include "apps/json/ByteText.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using KT::BytesFromJson;
using KT::Json;
using KT::ToJson;
using KT::ToTerminalText;
using namespace std::string_literals;

std::string RandomBytes(std::mt19937& random, std::size_t length) {
  // Half of the strings from a small set of bytes that make up well-formed and ill-formed sequences often.
  static const std::string kTelling = "a\\x0\n\x1b\x7f\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80\xff\xc0\x80\xed\xa0";
  const bool telling = random() % 2 == 0;
  std::string bytes;
  for (std::size_t i = 0; i < length; ++i) {
    bytes += telling ? kTelling[random() % kTelling.size()] : static_cast<char>(random() & 0xff);
  }
  return bytes;
}

// Takes the escapes of ToTerminalText back.
std::string FromTerminalText(const std::string& text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\') {
      bytes += text[i];
    } else if (text.at(++i) == 'x') {
      bytes += static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16));
      i += 2;
    } else {
      bytes += text[i];
    }
  }
  return bytes;
}

TEST(ByteText, Utf8IsAJsonString) {
  EXPECT_EQ(ToJson(""), Json(""));
  EXPECT_EQ(ToJson("Gr\xc3\xb6\xc3\x9f"
                   "e \xf0\x9f\x98\x80"),
            Json("Gr\xc3\xb6\xc3\x9f"
                 "e \xf0\x9f\x98\x80"));
  EXPECT_EQ(ToJson("a\0b"s), Json("a\0b"s));
}

TEST(ByteText, OtherBytesAreHexadecimal) {
  EXPECT_EQ(ToJson("f\xff"), (Json{{"hex", "66ff"}}));
  EXPECT_EQ(ToJson("\xc3"), (Json{{"hex", "c3"}}));
  EXPECT_EQ(ToJson("\xed\xa0\x80"), (Json{{"hex", "eda080"}}));  // a surrogate
  EXPECT_EQ(ToJson("\xc0\x80"), (Json{{"hex", "c080"}}));        // more bytes than needed
}

TEST(ByteText, HexDigitsOfEitherCaseAreRead) {
  EXPECT_EQ(BytesFromJson(Json{{"hex", "66Ff0a"}}), "f\xff\n"s);
  EXPECT_EQ(BytesFromJson(Json{{"hex", ""}}), ""s);
}

TEST(ByteText, WhatIsNeitherFormIsNotRead) {
  EXPECT_FALSE(BytesFromJson(Json(1)).has_value());
  EXPECT_FALSE(BytesFromJson(Json(nullptr)).has_value());
  EXPECT_FALSE(BytesFromJson(Json::array({"a"})).has_value());
  EXPECT_FALSE(BytesFromJson(Json::object()).has_value());
  EXPECT_FALSE(BytesFromJson(Json{{"hex", 66}}).has_value());
  EXPECT_FALSE(BytesFromJson(Json{{"Hex", "66"}}).has_value());
  EXPECT_FALSE(BytesFromJson(Json{{"hex", "66"}, {"more", 1}}).has_value());
  EXPECT_FALSE(BytesFromJson(Json{{"hex", "6"}}).has_value());
  EXPECT_FALSE(BytesFromJson(Json{{"hex", "6g"}}).has_value());
  EXPECT_FALSE(BytesFromJson(Json{{"hex", " 6"}}).has_value());
  EXPECT_FALSE(BytesFromJson(Json{{"hex", "0x66"}}).has_value());
}

TEST(ByteText, RandomBytesComeBackFromPrintedJson) {
  std::mt19937 random(1);
  for (int i = 0; i < 5'000; ++i) {
    const std::string bytes = RandomBytes(random, random() % 12);
    const std::string printed = ToJson(bytes).dump();
    ASSERT_EQ(BytesFromJson(Json::parse(printed)), bytes) << printed;
  }
}

TEST(ByteText, TerminalTextEscapesControlsBackslashesAndIllFormedBytes) {
  EXPECT_EQ(ToTerminalText("plain \xc3\xa9"), "plain \xc3\xa9");
  EXPECT_EQ(ToTerminalText("a\n\t\x1b[31m\x7f"), "a\\x0a\\x09\\x1b[31m\\x7f");
  EXPECT_EQ(ToTerminalText("a\\b"), "a\\\\b");
  EXPECT_EQ(ToTerminalText("\0"s), "\\x00");
  EXPECT_EQ(ToTerminalText("\xff"
                           "a\xc3"),
            "\\xffa\\xc3");
  EXPECT_EQ(ToTerminalText("\xe2\x82"
                           "a"),
            "\\xe2\\x82"
            "a");
}

TEST(ByteText, RandomBytesComeBackFromTerminalText) {
  std::mt19937 random(2);
  for (int i = 0; i < 5'000; ++i) {
    const std::string bytes = RandomBytes(random, random() % 12);
    ASSERT_EQ(FromTerminalText(ToTerminalText(bytes)), bytes);
  }
}

TEST(ByteText, TerminalTextIsUtf8WithoutControlsWhateverTheBytes) {
  std::mt19937 random(3);
  for (int i = 0; i < 5'000; ++i) {
    const std::string text = ToTerminalText(RandomBytes(random, 8));
    EXPECT_TRUE(ToJson(text).is_string());
    for (const char byte : text) {
      ASSERT_FALSE(static_cast<unsigned char>(byte) < 0x20 || byte == 0x7f);
    }
  }
}

}  // namespace
