#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

#include "tests/platform/ScratchMachine.h"

namespace testing_support {

ScratchMachine::ScratchMachine() : windowsFolder_(L"C:\\scratch\\") {
  std::string root = (std::filesystem::temp_directory_path() / "scratch-XXXXXX").string();
  if (mkdtemp(root.data()) == nullptr) {
    throw std::runtime_error("no temporary folder");
  }
  realFolder_ = std::filesystem::path(root) / "C" / "scratch";
  std::filesystem::create_directories(realFolder_);
  setenv("MARNOCK_ROOT", root.c_str(), 1);
}

ScratchMachine::~ScratchMachine() {
  unsetenv("MARNOCK_ROOT");
  std::error_code ignored;
  std::filesystem::remove_all(realFolder_.parent_path().parent_path(), ignored);
}

}  // namespace testing_support
