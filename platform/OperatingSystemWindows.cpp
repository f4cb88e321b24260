#define SECURITY_WIN32
#include <windows.h>
#include <wtsapi32.h>
// After windows.h, whose types it uses.
#include <security.h>

#include <filesystem>

#include "platform/OperatingSystem.h"

namespace platform {

namespace {

static_assert(kInvalidFileAttributes == INVALID_FILE_ATTRIBUTES);
static_assert(kFileAttributeDirectory == FILE_ATTRIBUTE_DIRECTORY && kFileAttributeNormal == FILE_ATTRIBUTE_NORMAL);
static_assert(kErrorFileNotFound == ERROR_FILE_NOT_FOUND && kErrorPathNotFound == ERROR_PATH_NOT_FOUND);
static_assert(kErrorAccessDenied == ERROR_ACCESS_DENIED && kErrorInvalidHandle == ERROR_INVALID_HANDLE);
static_assert(kErrorGeneralFailure == ERROR_GEN_FAILURE && kErrorAlreadyExists == ERROR_ALREADY_EXISTS);
static_assert(kErrorMoreData == ERROR_MORE_DATA && kErrorNoToken == ERROR_NO_TOKEN);
static_assert(kErrorNoneMapped == ERROR_NONE_MAPPED);

class WindowsOperatingSystem final : public OperatingSystem {
 public:
  Dword WTSGetActiveConsoleSessionId() override { return ::WTSGetActiveConsoleSessionId(); }
  bool WTSQueryUserToken(Dword session, UserToken* token) override {
    return ::WTSQueryUserToken(session, token) != FALSE;
  }
  int ImpersonateLoggedOnUser(UserToken token) override { return ::ImpersonateLoggedOnUser(token); }
  bool RevertToSelf() override { return ::RevertToSelf() != FALSE; }
  bool CloseHandle(UserToken token) override { return ::CloseHandle(token) != FALSE; }
  Dword GetLastError() override { return ::GetLastError(); }

  bool GetUserNameSamCompatible(wchar_t* buffer, Dword* size) override {
    ULONG length = *size;
    const bool done = ::GetUserNameExW(NameSamCompatible, buffer, &length) != FALSE;
    *size = length;
    return done;
  }

  Dword GetFileAttributesW(const std::wstring& path) override { return ::GetFileAttributesW(path.c_str()); }
  bool MoveFileW(const std::wstring& from, const std::wstring& to) override {
    return ::MoveFileW(from.c_str(), to.c_str()) != FALSE;
  }
  bool DeleteFileW(const std::wstring& path) override { return ::DeleteFileW(path.c_str()) != FALSE; }

  bool Exists(const std::wstring& path) override { return std::filesystem::exists(path); }
  bool CreateDirectories(const std::wstring& path) override { return std::filesystem::create_directories(path); }
  void AddOwnerAllOthersRead(const std::wstring& path) override {
    using std::filesystem::perms;
    std::filesystem::permissions(path, perms::owner_all | perms::others_read, std::filesystem::perm_options::add);
  }

  std::string SqliteFileName(const std::string& path) override { return path; }
};

}  // namespace

OperatingSystem& RealOperatingSystem() {
  static WindowsOperatingSystem system;
  return system;
}

}  // namespace platform
