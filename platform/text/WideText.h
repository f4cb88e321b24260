// Conversion between UTF-8 and wide text, for the parts of the platform that lie below the suite's string library.
#pragma once

#include <string>
#include <string_view>

namespace platform {

// Exact on well-formed text, embedded zeros included; U+FFFD where it is ill-formed (CodePoint.h says how many). Throw
// nothing but std::bad_alloc. Any thread.
std::string ToUtf8(std::wstring_view wide);
std::wstring ToWide(std::string_view utf8);

}  // namespace platform
