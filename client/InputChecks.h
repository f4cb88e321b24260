// What a client can tell before it sends: the store takes keys into SQL text as they stand and the encoding has
// limits that the service does not report.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace KT {

// The longest string that survives the encoding: its length is read back as a signed 16-bit number.
inline constexpr std::size_t kMaxStringBytes = 32'767;

// Why `key` (UTF-8; `name` is what to call it) cannot be used as a key, or nothing when it can: it is empty, holds a
// single quote or a NUL byte, or is longer than kMaxStringBytes.
std::optional<std::string> WhyNotAKey(const std::string& name, const std::string& key);

// Why `value` cannot be sent as a string field, or nothing when it can: it is longer than kMaxStringBytes.
std::optional<std::string> WhyNotAString(const std::string& name, const std::string& value);

}  // namespace KT
