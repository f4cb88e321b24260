#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <iostream>

#include "platform/logging/QxLogger.h"
#include "platform/program/ProcessHardening.h"
#include "tests/platform/program/PrintHardening.h"

namespace testing_support {

namespace {

void PrintStatusLine(const std::string& name) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with(name)) {
      std::cout << line << '\n';
    }
  }
}

void PrintMode(const std::string& path) {
  struct stat status {};
  stat(path.c_str(), &status);
  std::cout << std::oct << (status.st_mode & 07777U) << '\n';
}

}  // namespace

void PrintHardening(const std::string& folder) {
  umask(0);  // as careless as a caller can be
  platform::HardenProcess();
  PrintStatusLine("NoNewPrivs:");
  std::filesystem::create_directories(folder + "/one/two");
  std::ofstream(folder + "/file") << "text";
  QxLogger::GetInstance().OpenFile(folder + "/host.log");
  for (const char* made : {"/one", "/one/two", "/file", "/host.log"}) {
    PrintMode(folder + made);
  }
}

}  // namespace testing_support
