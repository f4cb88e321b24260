#include "platform/text/CodePoint.h"

namespace platform {

namespace {

constexpr bool kWideIsUtf16 = sizeof(wchar_t) == 2;

constexpr bool IsLeadSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool IsTrailSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

constexpr char32_t kFirstSupplementary = 0x10000;
constexpr char32_t kLastCodePoint = 0x10FFFF;

// What a lead byte announces. Only the second byte's range depends on it; that range is what rules out overlong forms,
// surrogates and values beyond U+10FFFF.
struct Sequence {
  int trailingBytes;  // -1: the byte starts no sequence
  unsigned char bitsOfLead;
  unsigned char secondFirst;
  unsigned char secondLast;
};

constexpr Sequence SequenceOf(unsigned char lead) {
  if (lead >= 0xC2 && lead <= 0xDF) return {1, 0x1F, 0x80, 0xBF};
  if (lead == 0xE0) return {2, 0x0F, 0xA0, 0xBF};
  if (lead == 0xED) return {2, 0x0F, 0x80, 0x9F};
  if (lead >= 0xE1 && lead <= 0xEF) return {2, 0x0F, 0x80, 0xBF};
  if (lead == 0xF0) return {3, 0x07, 0x90, 0xBF};
  if (lead >= 0xF1 && lead <= 0xF3) return {3, 0x07, 0x80, 0xBF};
  if (lead == 0xF4) return {3, 0x07, 0x80, 0x8F};
  return {-1, 0, 0, 0};
}

char32_t TakeMultibyte(unsigned char lead, std::string_view& utf8) {
  const Sequence sequence = SequenceOf(lead);
  if (sequence.trailingBytes < 0) return kReplacementCharacter;
  char32_t value = lead & sequence.bitsOfLead;
  unsigned char first = sequence.secondFirst;
  unsigned char last = sequence.secondLast;
  for (int i = 0; i < sequence.trailingBytes; ++i) {
    if (utf8.empty()) return kReplacementCharacter;
    const auto byte = static_cast<unsigned char>(utf8.front());
    if (byte < first || byte > last) return kReplacementCharacter;
    utf8.remove_prefix(1);
    value = (value << 6) | (byte & 0x3FU);
    first = 0x80;
    last = 0xBF;
  }
  return value;
}

}  // namespace

char32_t TakeCodePoint(std::string_view& utf8) {
  const auto lead = static_cast<unsigned char>(utf8.front());
  utf8.remove_prefix(1);
  return lead < 0x80 ? lead : TakeMultibyte(lead, utf8);
}

char32_t TakeCodePoint(std::wstring_view& wide) {
  const auto unit = static_cast<char32_t>(wide.front());
  wide.remove_prefix(1);
  if constexpr (kWideIsUtf16) {
    if (IsLeadSurrogate(unit) && !wide.empty() && IsTrailSurrogate(static_cast<char32_t>(wide.front()))) {
      const auto trail = static_cast<char32_t>(wide.front());
      wide.remove_prefix(1);
      return kFirstSupplementary + ((unit - 0xD800) << 10) + (trail - 0xDC00);
    }
  }
  return IsLeadSurrogate(unit) || IsTrailSurrogate(unit) || unit > kLastCodePoint ? kReplacementCharacter : unit;
}

void AppendCodePoint(std::string& utf8, char32_t codePoint) {
  const auto trailing = [codePoint](int shift) { return static_cast<char>(0x80 | ((codePoint >> shift) & 0x3F)); };
  if (codePoint < 0x80) {
    utf8 += static_cast<char>(codePoint);
  } else if (codePoint < 0x800) {
    utf8 += {static_cast<char>(0xC0 | (codePoint >> 6)), trailing(0)};
  } else if (codePoint < kFirstSupplementary) {
    utf8 += {static_cast<char>(0xE0 | (codePoint >> 12)), trailing(6), trailing(0)};
  } else {
    utf8 += {static_cast<char>(0xF0 | (codePoint >> 18)), trailing(12), trailing(6), trailing(0)};
  }
}

void AppendCodePoint(std::wstring& wide, char32_t codePoint) {
  if (kWideIsUtf16 && codePoint >= kFirstSupplementary) {
    const char32_t offset = codePoint - kFirstSupplementary;
    wide += static_cast<wchar_t>(0xD800 + (offset >> 10));
    wide += static_cast<wchar_t>(0xDC00 + (offset & 0x3FF));
  } else {
    wide += static_cast<wchar_t>(codePoint);
  }
}

}  // namespace platform
