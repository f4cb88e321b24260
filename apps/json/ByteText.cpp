#include "apps/json/ByteText.h"

#include <utf8.h>

#include <nlohmann/json.hpp>

namespace KT {

namespace {

constexpr char kHexDigits[] = "0123456789abcdef";

void AppendHex(std::string& text, char byte) {
  const auto value = static_cast<unsigned char>(byte);
  text += kHexDigits[value >> 4];
  text += kHexDigits[value & 15];
}

bool IsControl(char byte) { return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7f; }

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

nlohmann::json ToJson(const std::string& bytes) {
  if (utf8::is_valid(bytes.begin(), bytes.end())) {
    return bytes;
  }
  std::string hex;
  for (const char byte : bytes) {
    AppendHex(hex, byte);
  }
  return nlohmann::json{{"hex", hex}};
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
