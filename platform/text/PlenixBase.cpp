#include "platform/text/PlenixBase.h"

#include <utf8.h>

#include <iterator>

namespace {

constexpr bool kWideIsUtf16 = sizeof(wchar_t) == 2;
constexpr char32_t kReplacement = 0xFFFD;

bool IsLead(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsTrail(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

// Takes one code point off the front of [position, end); kReplacement for a unit that stands for none.
char32_t NextCodePoint(std::wstring::const_iterator& position, std::wstring::const_iterator end) {
  const auto unit = static_cast<char32_t>(*position++);
  if (kWideIsUtf16 && IsLead(unit) && position != end && IsTrail(static_cast<char32_t>(*position))) {
    return 0x10000 + ((unit - 0xD800) << 10) + (static_cast<char32_t>(*position++) - 0xDC00);
  }
  return IsLead(unit) || IsTrail(unit) || unit > 0x10FFFF ? kReplacement : unit;
}

}  // namespace

std::string PlenixBase::UnicodeToUTF8(const std::wstring& text) {
  std::string result;
  result.reserve(text.size());
  for (auto position = text.begin(); position != text.end();) {
    utf8::append(NextCodePoint(position, text.end()), std::back_inserter(result));
  }
  return result;
}

std::wstring PlenixBase::UTF8ToUnicode(const std::string& text) {
  std::string valid;
  valid.reserve(text.size());
  utf8::replace_invalid(text.begin(), text.end(), std::back_inserter(valid), kReplacement);
  std::wstring result;
  result.reserve(valid.size());
  if constexpr (kWideIsUtf16) {
    utf8::unchecked::utf8to16(valid.begin(), valid.end(), std::back_inserter(result));
  } else {
    utf8::unchecked::utf8to32(valid.begin(), valid.end(), std::back_inserter(result));
  }
  return result;
}
