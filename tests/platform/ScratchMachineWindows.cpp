#include <windows.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>

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
  // A child's console, which may outlive the child a little, keeps the files open that the child had.
  std::error_code error;
  for (int tries = 0; tries < 50 && std::filesystem::exists(realFolder_, error); ++tries) {
    std::filesystem::remove_all(realFolder_, error);
    if (error) std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
}

}  // namespace testing_support
