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
static_assert(kErrorSharingViolation == ERROR_SHARING_VIOLATION && kErrorLockViolation == ERROR_LOCK_VIOLATION);
static_assert(kErrorFileTooLarge == ERROR_FILE_TOO_LARGE);
static_assert(kErrorMoreData == ERROR_MORE_DATA && kErrorNoToken == ERROR_NO_TOKEN);
static_assert(kErrorNoneMapped == ERROR_NONE_MAPPED);

constexpr DWORD kShareWithAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// An open file or directory, closed at the end without a change to the last error.
class File {
 public:
  File(const std::wstring& path, DWORD access, DWORD flags)
      : handle_(::CreateFileW(path.c_str(), access, kShareWithAll, nullptr, OPEN_EXISTING, flags, nullptr)) {}
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  ~File() {
    const DWORD error = ::GetLastError();
    if (IsOpen()) ::CloseHandle(handle_);
    ::SetLastError(error);
  }
  bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE Handle() const { return handle_; }

 private:
  const HANDLE handle_;
};

bool Fail(Dword error) {
  ::SetLastError(error);
  return false;
}

bool ReadToEnd(HANDLE file, std::size_t limitBytes, std::string& bytes) {
  constexpr DWORD kBlockBytes = 65536;
  std::string block(kBlockBytes, '\0');
  while (bytes.size() <= limitBytes) {
    DWORD size = 0;
    if (::ReadFile(file, block.data(), kBlockBytes, &size, nullptr) == FALSE) return false;
    if (size == 0) return true;
    bytes.append(block, 0, size);
  }
  return Fail(kErrorFileTooLarge);
}

// What a file system says that cannot flush a directory.
bool CannotBeFlushed(Dword error) {
  return error == ERROR_ACCESS_DENIED || error == ERROR_INVALID_FUNCTION || error == ERROR_INVALID_HANDLE ||
         error == ERROR_INVALID_PARAMETER || error == ERROR_NOT_SUPPORTED;
}

// A search handle, closed at the end without a change to the last error.
class Search {
 public:
  explicit Search(const std::wstring& pattern) : handle_(::FindFirstFileW(pattern.c_str(), &entry_)) {}
  Search(const Search&) = delete;
  Search& operator=(const Search&) = delete;
  ~Search() {
    const DWORD error = ::GetLastError();
    if (IsOpen()) ::FindClose(handle_);
    ::SetLastError(error);
  }
  bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  bool Next() { return ::FindNextFileW(handle_, &entry_) != FALSE; }
  const WIN32_FIND_DATAW& Entry() const { return entry_; }

 private:
  WIN32_FIND_DATAW entry_{};
  const HANDLE handle_;
};

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

  bool ReadSharedFile(const std::wstring& path, std::size_t limitBytes, std::string* bytes) override {
    const File file(path, GENERIC_READ, FILE_ATTRIBUTE_NORMAL);
    bytes->clear();
    return file.IsOpen() && ReadToEnd(file.Handle(), limitBytes, *bytes);
  }

  bool ListFiles(const std::wstring& directory, std::vector<std::wstring>* names) override {
    names->clear();
    Search search(directory + (directory.ends_with(L'\\') ? L"*" : L"\\*"));
    if (!search.IsOpen()) return false;
    do {
      if ((search.Entry().dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) names->push_back(search.Entry().cFileName);
    } while (search.Next());
    return ::GetLastError() == ERROR_NO_MORE_FILES;
  }

  bool SyncDirectory(const std::wstring& path) override {
    const File directory(path, GENERIC_WRITE, FILE_FLAG_BACKUP_SEMANTICS);
    if (directory.IsOpen() && ::FlushFileBuffers(directory.Handle()) != FALSE) return true;
    return CannotBeFlushed(::GetLastError());
  }

  std::string SqliteFileName(const std::string& path) override { return path; }
};

}  // namespace

OperatingSystem& RealOperatingSystem() {
  static WindowsOperatingSystem system;
  return system;
}

}  // namespace platform
