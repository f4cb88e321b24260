#include <windows.h>

#include "IpcTestSystem.h"

PrivatePipes::PrivatePipes() = default;
PrivatePipes::~PrivatePipes() = default;

std::wstring PrivatePipes::NewName() {
  static int count = 0;
  return L"\\\\.\\Pipe\\MarnockTest" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++count);
}
