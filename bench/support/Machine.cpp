#include "bench/support/Machine.h"

#include <sys/utsname.h>

#include <fstream>
#include <string>
#include <thread>

namespace bench {

namespace {

// The text after `key` and what separates it in the first line of `path` that begins with it.
std::string Value(const char* path, const std::string& key, const std::string& separators) {
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) {
    if (line.rfind(key, 0) != 0) continue;
    const auto start = line.find_first_not_of(separators, key.size());
    return start == std::string::npos ? std::string() : line.substr(start, line.find_last_not_of('"') + 1 - start);
  }
  return "unknown";
}

}  // namespace

void DescribeMachine(std::ostream& out) {
  utsname system{};
  uname(&system);
  out << "machine: " << Value("/proc/cpuinfo", "model name", " \t:") << ", " << std::thread::hardware_concurrency()
      << " cores, " << Value("/etc/os-release", "PRETTY_NAME", "=\"") << ", Linux " << system.release << ", load "
      << Value("/proc/loadavg", "", "") << std::endl;
}

}  // namespace bench
