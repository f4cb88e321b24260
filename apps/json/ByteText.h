// The registry's strings are unchecked bytes; JSON and a terminal take only UTF-8. Both forms here are reversible.
#pragma once

#include <optional>
#include <string>

#include "apps/json/JsonDocument.h"

namespace KT {

// A JSON string when the bytes are UTF-8, else {"hex": "66ff"}: two lower-case digits a byte.
Json ToJson(const std::string& bytes);

// The bytes of either form (digits of either case), or nothing when `value` is neither.
std::optional<std::string> BytesFromJson(const Json& value);

// The same for one line of a terminal: control characters and bytes that are not UTF-8 as \xff, a backslash as \\.
std::string ToTerminalText(const std::string& bytes);

}  // namespace KT
