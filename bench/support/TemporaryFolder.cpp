#include "bench/support/TemporaryFolder.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace bench {

TemporaryFolder::TemporaryFolder() : path_((std::filesystem::temp_directory_path() / "marnock-bench-XXXXXX").string()) {
  if (mkdtemp(path_.data()) == nullptr) throw std::system_error(errno, std::generic_category(), path_);
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string UseMachineIn(const TemporaryFolder& folder) {
  setenv("MARNOCK_ROOT", folder.Path().c_str(), 1);
  setenv("MARNOCK_CONSOLE_USER", "BENCH\\bench", 1);
  std::string store = folder.Path() + "/C/Users/bench/Orvnta/DeviceMgr";
  std::filesystem::create_directories(store);
  return store;
}

}  // namespace bench
