#include <windows.h>

#include <atomic>
#include <string>

#include "tests/platform/ScratchMachine.h"

namespace testing_support {

ScratchMachine::ScratchMachine() {
  // A process id comes back, and an earlier folder of that name may have been left behind.
  static std::atomic<int> count{0};
  do {
    const std::wstring name = L"scratch-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++count);
    realFolder_ = std::filesystem::temp_directory_path() / name;
  } while (!std::filesystem::create_directory(realFolder_));
  windowsFolder_ = realFolder_.wstring() + L"\\";
}

ScratchMachine::~ScratchMachine() {
  std::error_code ignored;
  std::filesystem::remove_all(realFolder_, ignored);
}

}  // namespace testing_support
