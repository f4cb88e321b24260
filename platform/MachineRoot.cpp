#include "platform/MachineRoot.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace platform {

namespace {

// The environment variable's value, or an empty string.
std::string Environment(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? std::string() : value;
}

// The effective user's home folder by the user database; a service may well run without $HOME.
std::string RegisteredHome() {
  std::vector<char> buffer(16384);
  passwd entry{};
  passwd* found = nullptr;
  if (getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr) {
    return {};
  }
  return found->pw_dir;
}

std::string WithoutTrailingSlashes(std::string path) {
  path.erase(path.find_last_not_of('/') + 1);
  return path;
}

}  // namespace

std::string MachineRoot() {
  if (const std::string root = Environment("MARNOCK_ROOT"); !root.empty()) {
    return WithoutTrailingSlashes(root);
  }
  // A relative XDG_DATA_HOME is to be ignored, says the convention that the variable belongs to.
  if (const std::string data = Environment("XDG_DATA_HOME"); data.starts_with('/')) {
    return WithoutTrailingSlashes(data) + "/marnock";
  }
  const std::string home = Environment("HOME");
  return WithoutTrailingSlashes(home.empty() ? RegisteredHome() : home) + "/.local/share/marnock";
}

std::string PathInMachineRoot(const std::string& windowsPath) {
  if (windowsPath.empty()) return {};
  std::string path = windowsPath;
  std::replace(path.begin(), path.end(), '\\', '/');
  if (path.find(':') == 1) {
    path.erase(1, 1);
  }
  return MachineRoot() + "/" + path;
}

}  // namespace platform
