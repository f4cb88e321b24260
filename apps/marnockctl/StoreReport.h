// What marnockctl store check prints.
#pragma once

#include <string>
#include <vector>

#include "apps/json/JsonDocument.h"
#include "apps/marnockctl/StoreLook.h"

namespace KT {

// A block of lines a file, an empty line between two; no newline at the end.
std::string StoreText(const std::vector<StoreLook>& looks);

// The same as an array, an object a file.
Json StoreJson(const std::vector<StoreLook>& looks);

}  // namespace KT
