// How a line's text is written to the log: as UTF-8 in which nothing can end the line or disguise it.
#pragma once

#include <string>
#include <string_view>

namespace platform {

// Appends `text` as UTF-8, ill-formed text as U+FFFD (see CodePoint.h). Escaped are
// - control characters (C0, DEL, C1): as \n, \r, \t and otherwise by two digits, \x1b, \x85;
// - U+2028 and U+2029, which some readers take for line ends, and the bidirectional controls U+202A to U+202E and
//   U+2066 to U+2069, which make a line look like another one: by four digits, \u2028.
// A backslash of the text stays as it is, so that Windows paths remain readable and searchable. The price is that the
// two characters \n of a text look like an escaped line end; nothing reads a log back, so no more is promised.
void AppendLogText(std::string& line, std::wstring_view text);

}  // namespace platform
