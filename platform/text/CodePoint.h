// Code points in and out of UTF-8 and wide text: the one place that knows both encodings.
//
// Wide text is UTF-16 on Windows and UTF-32 on the POSIX port. Ill-formed text never stops a reader: what cannot be
// decoded is read as U+FFFD, one for each maximal subpart of an ill-formed sequence (the practice that the Unicode
// Standard recommends, and what browsers do): a truncated sequence counts as one, each byte of an overlong form, of an
// encoded surrogate or of a value beyond U+10FFFF counts for itself, and so does each lone surrogate of wide text.
#pragma once

#include <string>
#include <string_view>

namespace platform {

inline constexpr char32_t kReplacementCharacter = 0xFFFD;

// Take one code point off the front of `text`, which must not be empty. Never fail.
char32_t TakeCodePoint(std::string_view& utf8);
char32_t TakeCodePoint(std::wstring_view& wide);

// Append `codePoint`, which must be a Unicode scalar value: at most U+10FFFF and no surrogate.
void AppendCodePoint(std::string& utf8, char32_t codePoint);
void AppendCodePoint(std::wstring& wide, char32_t codePoint);

}  // namespace platform
