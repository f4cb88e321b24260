#include <windows.h>

#include <process.h>

#include <filesystem>

#include "tests/platform/ipc/IpcTestSystem.h"

PrivatePipes::PrivatePipes() = default;
PrivatePipes::~PrivatePipes() = default;

std::wstring PrivatePipes::NewName() {
  static int count = 0;
  return L"\\\\.\\Pipe\\MarnockTest" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++count);
}

int StatusForForeignHello(const std::wstring& pipeName, int wantedId, int floodedId) {
  wchar_t self[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, self, MAX_PATH);
  const std::wstring program = std::filesystem::path(self).replace_filename(L"ipc_foreign_peer.exe").wstring();
  const std::wstring id = std::to_wstring(wantedId);
  const std::wstring flooded = std::to_wstring(floodedId);
  const wchar_t* const arguments[] = {L"ipc_foreign_peer", pipeName.c_str(), id.c_str(),
                                      floodedId == 0 ? nullptr : flooded.c_str(), nullptr};
  return static_cast<int>(_wspawnv(_P_WAIT, program.c_str(), arguments));
}
