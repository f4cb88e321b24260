#include "platform/ipc/PipeSecurity.h"

#include <windows.h>
// The order matters: sddl.h needs windows.h.
#include <sddl.h>

#include <system_error>
#include <vector>

#include "platform/OperatingSystem.h"

namespace platform::ipc {

namespace {

[[noreturn]] void ThrowLastError(const char* what) {
  throw std::system_error(static_cast<int>(::GetLastError()), std::system_category(), what);
}

// A token, closed at the end.
class Token {
 public:
  explicit Token(HANDLE handle) : handle_(handle) {}
  Token(const Token&) = delete;
  Token& operator=(const Token&) = delete;
  ~Token() { OperatingSystem::Get().CloseHandle(handle_); }

  std::wstring UserSid() const {
    DWORD size = 0;
    ::GetTokenInformation(handle_, TokenUser, nullptr, 0, &size);
    std::vector<char> user(size);
    LPWSTR text = nullptr;
    if (::GetTokenInformation(handle_, TokenUser, user.data(), size, &size) == FALSE ||
        ::ConvertSidToStringSidW(reinterpret_cast<const TOKEN_USER*>(user.data())->User.Sid, &text) == FALSE) {
      ThrowLastError("the SID of the pipe's user");
    }
    std::wstring sid(text);
    ::LocalFree(text);
    return sid;
  }

 private:
  HANDLE handle_;
};

HANDLE OwnToken() {
  HANDLE token = nullptr;
  if (!::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, &token)) {
    ThrowLastError("the token of this process");
  }
  return token;
}

}  // namespace

std::wstring ConsoleUserSid() {
  OperatingSystem& system = OperatingSystem::Get();
  UserToken consoleUser = nullptr;
  const bool known = system.WTSQueryUserToken(system.WTSGetActiveConsoleSessionId(), &consoleUser);
  return Token(known ? consoleUser : OwnToken()).UserSid();
}

PipeSecurity::PipeSecurity() {
  // 0x12019B is FILE_GENERIC_READ, FILE_WRITE_DATA, FILE_WRITE_EA and FILE_WRITE_ATTRIBUTES. FILE_GENERIC_WRITE would
  // add FILE_CREATE_PIPE_INSTANCE, with which the user's programs could answer in the hub's place.
  const std::wstring text = L"D:P(A;;GA;;;SY)(A;;GA;;;BA)(A;;0x12019B;;;" + ConsoleUserSid() + L")";
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  if (!::ConvertStringSecurityDescriptorToSecurityDescriptorW(text.c_str(), SDDL_REVISION_1, &descriptor, nullptr)) {
    ThrowLastError("the security descriptor of the pipe");
  }
  descriptor_.reset(descriptor);
}

void PipeSecurity::LocalFreeing::operator()(void* memory) const { ::LocalFree(memory); }

}  // namespace platform::ipc
