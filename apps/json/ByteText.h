// The registry's strings are unchecked bytes; JSON and a terminal take only UTF-8. Both forms here are reversible.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace KT {

// A JSON string when the bytes are UTF-8, else {"hex": "66ff"}: two lower-case digits a byte.
nlohmann::json ToJson(const std::string& bytes);

// The same for one line of a terminal: control characters and bytes that are not UTF-8 as \xff, a backslash as \\.
std::string ToTerminalText(const std::string& bytes);

}  // namespace KT
