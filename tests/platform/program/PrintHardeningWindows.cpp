#include <windows.h>

#include <cstdint>
#include <filesystem>
#include <iostream>

#include "platform/ipc/IPCMessageClient.h"
#include "platform/ipc/IPCMessageHub.h"
#include "platform/logging/QxLogger.h"
#include "platform/program/ProcessHardening.h"
#include "tests/platform/program/PrintHardening.h"

namespace testing_support {

namespace {

constexpr std::uintptr_t kHighestHandle = 0x4000;
constexpr const wchar_t* kPipe = L"\\\\.\\Pipe\\marnock-hardening-test";

// Puts a DLL into the current directory, where a search that is not restricted finds it.
void PlantDll(const std::filesystem::path& folder) {
  std::wstring program(32'768, L'\0');
  program.resize(GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size())));
  std::filesystem::copy_file(std::filesystem::path(program).parent_path() / "libwinpthread-1.dll",
                             folder / "planted.dll");
  std::filesystem::current_path(folder);
}

void PrintWhetherPlantedDllLoads() {
  const HMODULE planted = LoadLibraryW(L"planted.dll");
  std::cout << (planted == nullptr ? "refused" : "loaded") << '\n';
  if (planted != nullptr) {
    FreeLibrary(planted);
  }
}

int CountInheritableHandles() {
  int count = 0;
  for (std::uintptr_t value = 4; value < kHighestHandle; value += 4) {
    DWORD flags = 0;
    if (GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags) != FALSE && (flags & HANDLE_FLAG_INHERIT) != 0) {
      ++count;
    }
  }
  return count;
}

}  // namespace

void PrintHardening(const std::string& folder) {
  PlantDll(folder);
  PrintWhetherPlantedDllLoads();
  platform::HardenProcess();
  PrintWhetherPlantedDllLoads();
  const int before = CountInheritableHandles();
  QxLogger::GetInstance().OpenFile(folder + "\\host.log");
  IPCMessageHub hub(kPipe);
  if (hub.Claim()) {
    hub.Start();
    const IPCMessageClient client(IPCMessageClient::kAnyClientId, true, false, kPipe);
    client.WaitUntilConnected(std::chrono::seconds(10));
    std::cout << "inheritable streams and files: " << CountInheritableHandles() - before << '\n';
  }
  for (const DWORD stream : {STD_INPUT_HANDLE, STD_OUTPUT_HANDLE, STD_ERROR_HANDLE}) {
    DWORD flags = 0;
    GetHandleInformation(GetStdHandle(stream), &flags);
    std::cout << "inheritable stream: " << (flags & HANDLE_FLAG_INHERIT) << '\n';
  }
}

}  // namespace testing_support
