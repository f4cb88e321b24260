#include "apps/json/ByteText.h"

#include <utf8.h>

namespace KT {

namespace {

constexpr char kHexDigits[] = "0123456789abcdef";

void AppendHex(std::string& text, char byte) {
  const auto value = static_cast<unsigned char>(byte);
  text += kHexDigits[value >> 4];
  text += kHexDigits[value & 15];
}

bool IsControl(char byte) { return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7f; }

// The value of a hexadecimal digit, or nothing.
std::optional<unsigned> DigitValue(char digit) {
  if (digit >= '0' && digit <= '9') return static_cast<unsigned>(digit - '0');
  if (digit >= 'a' && digit <= 'f') return static_cast<unsigned>(digit - 'a' + 10);
  if (digit >= 'A' && digit <= 'F') return static_cast<unsigned>(digit - 'A' + 10);
  return std::nullopt;
}

std::optional<std::string> FromHex(const std::string& hex) {
  if (hex.size() % 2 != 0) {
    return std::nullopt;
  }
  std::string bytes;
  for (std::size_t i = 0; i < hex.size(); i += 2) {
    const auto high = DigitValue(hex[i]);
    const auto low = DigitValue(hex[i + 1]);
    if (!high.has_value() || !low.has_value()) {
      return std::nullopt;
    }
    bytes += static_cast<char>(*high << 4 | *low);
  }
  return bytes;
}

void AppendWellFormed(std::string& text, char byte) {
  if (byte == '\\') {
    text += "\\\\";
  } else if (IsControl(byte)) {
    text += "\\x";
    AppendHex(text, byte);
  } else {
    text += byte;
  }
}

}  // namespace

Json ToJson(const std::string& bytes) {
  if (utf8::is_valid(bytes.begin(), bytes.end())) {
    return bytes;
  }
  std::string hex;
  for (const char byte : bytes) {
    AppendHex(hex, byte);
  }
  return Json{{"hex", hex}};
}

std::optional<std::string> BytesFromJson(const Json& value) {
  if (value.is_string()) {
    return value.get<std::string>();
  }
  if (value.is_object() && value.size() == 1 && value.contains("hex") && value["hex"].is_string()) {
    return FromHex(value["hex"].get<std::string>());
  }
  return std::nullopt;
}

std::string ToTerminalText(const std::string& bytes) {
  std::string text;
  auto position = bytes.begin();
  while (position != bytes.end()) {
    const auto invalid = utf8::find_invalid(position, bytes.end());
    for (; position != invalid; ++position) {
      AppendWellFormed(text, *position);
    }
    if (position != bytes.end()) {
      text += "\\x";
      AppendHex(text, *position++);
    }
  }
  return text;
}

}  // namespace KT
