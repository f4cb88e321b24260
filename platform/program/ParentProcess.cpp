#include "platform/program/ParentProcess.h"

#include <windows.h>
// After windows.h, whose types it uses.
#include <tlhelp32.h>

#include <functional>
#include <memory>

namespace platform {

namespace {

// Fills `entry` with the first running process that is `wanted`; false when there is none.
bool FindProcess(PROCESSENTRY32W& entry, const std::function<bool(const PROCESSENTRY32W&)>& wanted) {
  HANDLE const processes = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  if (processes == INVALID_HANDLE_VALUE) {
    return false;
  }
  const std::unique_ptr<void, decltype(&CloseHandle)> closing(processes, &CloseHandle);
  entry.dwSize = sizeof entry;
  BOOL more = Process32FirstW(processes, &entry);
  while (more != FALSE && !wanted(entry)) {
    more = Process32NextW(processes, &entry);
  }
  return more != FALSE;
}

}  // namespace

bool StartedByServiceManager() {
  PROCESSENTRY32W self{};
  PROCESSENTRY32W parent{};
  return FindProcess(self, [](const auto& each) { return each.th32ProcessID == GetCurrentProcessId(); }) &&
         FindProcess(parent, [&](const auto& each) { return each.th32ProcessID == self.th32ParentProcessID; }) &&
         lstrcmpiW(parent.szExeFile, L"services.exe") == 0;
}

}  // namespace platform
