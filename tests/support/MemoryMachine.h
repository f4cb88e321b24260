// A machine whose console user's files are on a disk in memory.
#pragma once

#include <string>

#include "platform/OperatingSystem.h"
#include "tests/support/MemoryDisk.h"
#include "tests/support/MemoryDiskVfs.h"

namespace support {

// In place of the operating system and of SQLite's files for as long as it lives. The console user is alice; every
// folder exists. One thread.
class MemoryMachine final : public platform::OperatingSystem {
 public:
  // Where the database files are: a Windows path with a backslash at the end.
  static constexpr const wchar_t* kFolder = L"C:\\Users\\alice\\Orvnta\\DeviceMgr\\";

  explicit MemoryMachine(const DiskImage& start = {});
  ~MemoryMachine() override;

  MemoryMachine(const MemoryMachine&) = delete;
  MemoryMachine& operator=(const MemoryMachine&) = delete;

  MemoryDisk& Disk() { return disk_; }

  platform::Dword WTSGetActiveConsoleSessionId() override { return 1; }
  bool WTSQueryUserToken(platform::Dword session, platform::UserToken* token) override;
  int ImpersonateLoggedOnUser(platform::UserToken token) override;
  bool RevertToSelf() override { return true; }
  bool GetUserNameSamCompatible(wchar_t* buffer, platform::Dword* size) override;
  bool CloseHandle(platform::UserToken token) override;
  platform::Dword GetLastError() override { return lastError_; }
  platform::Dword GetFileAttributesW(const std::wstring& path) override;
  bool MoveFileW(const std::wstring& from, const std::wstring& to) override;
  bool DeleteFileW(const std::wstring& path) override;
  bool Exists(const std::wstring& path) override;
  bool CreateDirectories(const std::wstring&) override { return true; }
  void AddOwnerAllOthersRead(const std::wstring&) override {}
  bool ReadSharedFile(const std::wstring& path, std::size_t limitBytes, std::string* bytes) override;
  bool ListFiles(const std::wstring& directory, std::vector<std::wstring>* names) override;
  bool SyncDirectory(const std::wstring& path) override;
  std::string SqliteFileName(const std::string& path) override { return path; }

 private:
  bool Fail(platform::Dword error);

  MemoryDisk disk_;
  MemoryDiskVfs vfs_;
  platform::OperatingSystem* const previous_;
  platform::Dword lastError_ = 0;
};

}  // namespace support
