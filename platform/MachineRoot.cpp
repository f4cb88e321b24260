#include "platform/MachineRoot.h"

#include <algorithm>
#include <cstdlib>

namespace platform {

namespace {

// The environment variable's value, or an empty string.
std::string Environment(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? std::string() : value;
}

}  // namespace

std::string MachineRoot() {
  if (std::string root = Environment("MARNOCK_ROOT"); !root.empty()) {
    return root;
  }
  if (const std::string data = Environment("XDG_DATA_HOME"); !data.empty()) {
    return data + "/marnock";
  }
  return Environment("HOME") + "/.local/share/marnock";
}

std::string PathInMachineRoot(const std::string& windowsPath) {
  std::string path = windowsPath;
  std::replace(path.begin(), path.end(), '\\', '/');
  if (const auto colon = path.find(':'); colon == 1) {
    path.erase(colon, 1);
  }
  return MachineRoot() + "/" + path;
}

}  // namespace platform
