#include "client/InputChecks.h"

namespace KT {

std::optional<std::string> WhyNotAKey(const std::string& name, const std::string& key) {
  if (key.empty()) {
    return name + " is empty: an entry needs a key to be found by";
  }
  if (const auto position = key.find('\''); position != std::string::npos) {
    return name + " holds a single quote at byte " + std::to_string(position) + ": the store cannot look such a key up";
  }
  if (const auto position = key.find('\0'); position != std::string::npos) {
    return name + " holds a NUL at byte " + std::to_string(position) + ": the store would cut the key there";
  }
  return WhyNotAString(name, key);
}

std::optional<std::string> WhyNotAString(const std::string& name, const std::string& value) {
  if (value.size() > kMaxStringBytes) {
    return name + " has " + std::to_string(value.size()) + " bytes; the longest string that can be sent has " +
           std::to_string(kMaxStringBytes);
  }
  return std::nullopt;
}

}  // namespace KT
