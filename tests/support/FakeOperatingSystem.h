// A scripted operating system: the console user is made up, files are real, any call can be made to fail.
#pragma once

#include <array>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/OperatingSystem.h"
#include "tests/support/FaultSpan.h"

namespace support {

enum class SystemCall {
  WTSGetActiveConsoleSessionId,
  WTSQueryUserToken,
  ImpersonateLoggedOnUser,
  RevertToSelf,
  GetUserNameSamCompatible,
  CloseHandle,
  GetLastError,
  GetFileAttributesW,
  MoveFileW,
  DeleteFileW,
  Exists,
  CreateDirectories,
  AddOwnerAllOthersRead,
  ReadSharedFile,
  ListFiles,
  SyncDirectory,
  SqliteFileName,
};
inline constexpr std::size_t kSystemCalls = 17;

// In place of the real one for as long as it lives; file calls that are not made to fail go to the real one. One
// thread.
class FakeOperatingSystem final : public platform::OperatingSystem {
 public:
  // `samName`: the console user, for example L"PC01\\alice".
  explicit FakeOperatingSystem(std::wstring samName);
  ~FakeOperatingSystem() override;

  FakeOperatingSystem(const FakeOperatingSystem&) = delete;
  FakeOperatingSystem& operator=(const FakeOperatingSystem&) = delete;

  // The n-th call of that kind from now on (1 is the next one) does nothing and reports failure with that error number.
  // Calls without one report it by their result: Exists and CreateDirectories by false.
  void Fail(SystemCall call, int nth, platform::Dword error = platform::kErrorGeneralFailure,
            FaultSpan span = FaultSpan::Once);

  // The n-th call of that kind from now on throws std::filesystem::filesystem_error with the text "made to fail".
  // For Exists, CreateDirectories and AddOwnerAllOthersRead.
  void Throw(SystemCall call, int nth, FaultSpan span = FaultSpan::Once);

  // Nothing fails any more.
  void Heal() { faults_.clear(); }

  // Calls that were made to fail since construction or the last ClearCalls.
  int Failures() const { return failures_; }

  // Every call since construction or ClearCalls with its arguments, such as "MoveFileW(C:\a, C:\a.tmp)", in UTF-8.
  const std::vector<std::string>& Calls() const { return calls_; }
  void ClearCalls() {
    calls_.clear();
    failures_ = 0;
  }

  // Leaves Calls empty from now on, and so takes no memory of its own in a call: for tests in which that runs out.
  void StopRecording() { isRecording_ = false; }

  // Puts an event of the test's own in line with the calls.
  void Note(const std::string& event) { calls_.push_back(event); }

  // What the made-up console says. The token is any value but null.
  std::wstring samName;
  platform::Dword session = 1;
  platform::UserToken token = &session;
  int impersonationResult = 1;
  std::wstring leftByFailedLookup;  // what a failed GetUserNameSamCompatible writes to the buffer all the same

  platform::Dword WTSGetActiveConsoleSessionId() override;
  bool WTSQueryUserToken(platform::Dword session, platform::UserToken* token) override;
  int ImpersonateLoggedOnUser(platform::UserToken token) override;
  bool RevertToSelf() override;
  bool GetUserNameSamCompatible(wchar_t* buffer, platform::Dword* size) override;
  bool CloseHandle(platform::UserToken token) override;
  platform::Dword GetLastError() override;
  platform::Dword GetFileAttributesW(const std::wstring& path) override;
  bool MoveFileW(const std::wstring& from, const std::wstring& to) override;
  bool DeleteFileW(const std::wstring& path) override;
  bool Exists(const std::wstring& path) override;
  bool CreateDirectories(const std::wstring& path) override;
  void AddOwnerAllOthersRead(const std::wstring& path) override;
  bool ReadSharedFile(const std::wstring& path, std::size_t limitBytes, std::string* bytes) override;
  bool ListFiles(const std::wstring& directory, std::vector<std::wstring>* names) override;
  bool SyncDirectory(const std::wstring& path) override;
  std::string SqliteFileName(const std::string& path) override;

 private:
  struct Fault {
    int first;
    int last;
    platform::Dword error;
    bool isThrown;
  };

  void Add(SystemCall call, int nth, FaultSpan span, platform::Dword error, bool isThrown);
  template <class... Arguments>
  bool IsMadeToFail(SystemCall call, const char* name, const Arguments&... arguments);
  int& Count(SystemCall call) { return counts_[static_cast<std::size_t>(call)]; }
  bool Delegated(bool result);
  std::string TokenName(platform::UserToken value) const;

  platform::OperatingSystem* const previous_;
  std::array<int, kSystemCalls> counts_{};
  std::multimap<SystemCall, Fault> faults_;
  int failures_ = 0;
  bool isRecording_ = true;
  std::vector<std::string> calls_;
  std::optional<platform::Dword> lastError_;  // empty: the last failure was the real system's
};

}  // namespace support
