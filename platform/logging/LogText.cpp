#include "platform/logging/LogText.h"

#include "platform/text/CharacterRun.h"
#include "platform/text/CodePoint.h"

namespace platform {

namespace {

constexpr auto kIsPlainAscii = [](wchar_t c) { return c >= 0x20 && c < 0x7F; };
constexpr bool IsControl(char32_t c) { return c < 0x20 || (c >= 0x7F && c < 0xA0); }
constexpr bool IsDeceptive(char32_t c) { return (c >= 0x2028 && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069); }

void AppendHex(std::string& line, char32_t value, int digits) {
  while (digits-- > 0) {
    line += "0123456789abcdef"[(value >> (4 * digits)) & 0xF];
  }
}

void AppendControl(std::string& line, char32_t control) {
  switch (control) {
    case '\n':
      line += "\\n";
      break;
    case '\r':
      line += "\\r";
      break;
    case '\t':
      line += "\\t";
      break;
    default:
      line += "\\x";
      AppendHex(line, control, 2);
  }
}

}  // namespace

void AppendLogText(std::string& line, std::wstring_view text) {
  for (MoveRun(text, line, kIsPlainAscii); !text.empty(); MoveRun(text, line, kIsPlainAscii)) {
    const char32_t c = TakeCodePoint(text);
    if (IsControl(c)) {
      AppendControl(line, c);
    } else if (IsDeceptive(c)) {
      line += "\\u";
      AppendHex(line, c, 4);
    } else {
      AppendCodePoint(line, c);
    }
  }
}

}  // namespace platform
