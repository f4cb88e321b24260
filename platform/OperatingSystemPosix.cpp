#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <vector>

#include "platform/MachineRoot.h"
#include "platform/OperatingSystem.h"
#include "platform/WindowsError.h"
#include "platform/text/WideText.h"

namespace platform {

namespace {

// A plain number on purpose: it needs no destructor when a thread ends. As the last error of Windows, it is the
// thread's.
thread_local Dword t_lastError = 0;

bool Fail(Dword error) {
  t_lastError = error;
  return false;
}

// A std::filesystem::path made from a wide string would go through the C locale and throw on what it cannot convert.
std::string PosixPath(const std::wstring& windowsPath) { return PathInMachineRoot(ToUtf8(windowsPath)); }

bool IsDirectory(const std::filesystem::path& path) {
  std::error_code ignored;
  return std::filesystem::is_directory(path, ignored);
}

// Why there is nothing at `path`: Windows tells a missing file from a missing folder.
Dword MissingBecause(const std::string& path) {
  return IsDirectory(std::filesystem::path(path).parent_path()) ? kErrorFileNotFound : kErrorPathNotFound;
}

Dword ErrorAt(const std::string& path, int errnoValue) {
  return errnoValue == ENOENT ? MissingBecause(path) : WindowsErrorOf(errnoValue);
}

std::string HostName() {
  char name[HOST_NAME_MAX + 1] = {};
  return gethostname(name, HOST_NAME_MAX) == 0 ? name : "localhost";
}

// The effective user's account name, or an empty string when the user database does not know it.
std::string AccountName() {
  std::vector<char> buffer(16384);
  passwd entry{};
  passwd* found = nullptr;
  const int error = getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found);
  return error == 0 && found != nullptr ? found->pw_name : std::string();
}

// An open file, closed at the end.
class Descriptor {
 public:
  explicit Descriptor(int value) : value_(value) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (value_ >= 0) close(value_);
  }
  int Value() const { return value_; }

 private:
  const int value_;
};

// Appends what is left to read. Returns an errno value, 0 on success, EFBIG when it is more than `limitBytes`.
int ReadToEnd(int descriptor, std::size_t limitBytes, std::string& bytes) {
  std::array<char, 65536> block{};
  while (bytes.size() <= limitBytes) {
    const ssize_t size = read(descriptor, block.data(), block.size());
    if (size == 0) return 0;
    if (size < 0 && errno != EINTR) return errno;
    if (size > 0) bytes.append(block.data(), static_cast<std::size_t>(size));
  }
  return EFBIG;
}

// In SAM-compatible form; empty when it cannot be found out.
std::string ConsoleUser() {
  if (const char* const name = std::getenv("MARNOCK_CONSOLE_USER"); name != nullptr && *name != '\0') {
    return name;
  }
  const std::string account = AccountName();
  return account.empty() ? account : HostName() + '\\' + account;
}

class PosixOperatingSystem final : public OperatingSystem {
 public:
  Dword WTSGetActiveConsoleSessionId() override { return 1; }
  bool WTSQueryUserToken(Dword, UserToken*) override { return Fail(kErrorNoToken); }
  int ImpersonateLoggedOnUser(UserToken) override { return Fail(kErrorInvalidHandle) ? 1 : 0; }
  bool RevertToSelf() override { return true; }
  bool CloseHandle(UserToken) override { return Fail(kErrorInvalidHandle); }
  Dword GetLastError() override { return t_lastError; }

  bool GetUserNameSamCompatible(wchar_t* buffer, Dword* size) override {
    const std::wstring name = ToWide(ConsoleUser());
    if (name.empty()) {
      return Fail(kErrorNoneMapped);
    }
    const auto length = static_cast<Dword>(name.size());
    const bool fits = length < *size;
    *size = fits ? length : length + 1;
    if (!fits) {
      return Fail(kErrorMoreData);
    }
    std::memcpy(buffer, name.c_str(), (name.size() + 1) * sizeof(wchar_t));
    return true;
  }

  Dword GetFileAttributesW(const std::wstring& path) override {
    const std::string name = PosixPath(path);
    struct stat status {};
    if (stat(name.c_str(), &status) != 0) {
      Fail(ErrorAt(name, errno));
      return kInvalidFileAttributes;
    }
    return S_ISDIR(status.st_mode) ? kFileAttributeDirectory : kFileAttributeNormal;
  }

  bool MoveFileW(const std::wstring& from, const std::wstring& to) override {
    const std::string source = PosixPath(from);
    const std::string target = PosixPath(to);
    if (renameat2(AT_FDCWD, source.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE) == 0) {
      return true;
    }
    const int error = errno;
    struct stat status {};
    const bool sourceIsThere = lstat(source.c_str(), &status) == 0;
    return Fail(ErrorAt(sourceIsThere ? target : source, error));
  }

  bool DeleteFileW(const std::wstring& path) override {
    const std::string name = PosixPath(path);
    return unlink(name.c_str()) == 0 || Fail(ErrorAt(name, errno));
  }

  bool Exists(const std::wstring& path) override { return std::filesystem::exists(PosixPath(path)); }

  bool CreateDirectories(const std::wstring& path) override {
    return std::filesystem::create_directories(PosixPath(path));
  }

  void AddOwnerAllOthersRead(const std::wstring& path) override {
    using std::filesystem::perms;
    std::filesystem::permissions(PosixPath(path), perms::owner_all | perms::others_read,
                                 std::filesystem::perm_options::add);
  }

  bool ReadSharedFile(const std::wstring& path, std::size_t limitBytes, std::string* bytes) override {
    const std::string name = PosixPath(path);
    const Descriptor file(open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));  // a FIFO must not keep us waiting
    bytes->clear();
    const int error = file.Value() < 0 ? errno : ReadToEnd(file.Value(), limitBytes, *bytes);
    return error == 0 || Fail(ErrorAt(name, error));
  }

  bool ListFiles(const std::wstring& directory, std::vector<std::wstring>* names) override {
    const std::string name = PosixPath(directory);
    names->clear();
    std::error_code error;
    for (std::filesystem::directory_iterator entry(name, error), end; !error && entry != end; entry.increment(error)) {
      std::error_code ignored;
      if (!entry->is_directory(ignored)) names->push_back(ToWide(entry->path().filename().string()));
    }
    return !error || Fail(ErrorAt(name, error.value()));
  }

  bool SyncDirectory(const std::wstring& path) override {
    const std::string name = PosixPath(path);
    const Descriptor directory(open(name.c_str(), O_RDONLY | O_CLOEXEC | O_DIRECTORY));
    if (directory.Value() >= 0 && (fsync(directory.Value()) == 0 || errno == EINVAL || errno == ENOTSUP)) {
      return true;
    }
    return Fail(ErrorAt(name, errno));
  }

  std::string SqliteFileName(const std::string& path) override { return PathInMachineRoot(path); }
};

}  // namespace

OperatingSystem& RealOperatingSystem() {
  static PosixOperatingSystem system;
  return system;
}

}  // namespace platform
