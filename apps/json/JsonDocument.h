// JSON as the programs read and print it: members keep their order, and none may stand twice.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace KT {

using Json = nlohmann::ordered_json;

// Parses one document. Throws std::runtime_error that says in one line for a terminal what is wrong and where (line and
// column for what is not JSON, the name for a member that stands twice in one object).
Json ParseJson(const std::string& text);

}  // namespace KT
