#include "tests/support/FakeOperatingSystem.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "platform/text/PlenixBase.h"

namespace support {

namespace {

using platform::Dword;
using platform::RealOperatingSystem;
using platform::UserToken;

std::string Text(const std::wstring& path) { return PlenixBase::UnicodeToUTF8(path); }
std::string Text(const std::string& path) { return path; }
std::string Text(Dword number) { return std::to_string(number); }

std::string Joined() { return ""; }
template <class First, class... Rest>
std::string Joined(const First& first, const Rest&... rest) {
  return (Text(first) + ... + (", " + Text(rest)));
}

}  // namespace

FakeOperatingSystem::FakeOperatingSystem(std::wstring name)
    : samName(std::move(name)), previous_(platform::OperatingSystem::Replace(this)) {}

FakeOperatingSystem::~FakeOperatingSystem() { platform::OperatingSystem::Replace(previous_); }

void FakeOperatingSystem::Fail(SystemCall call, int nth, Dword error, FaultSpan span) {
  Add(call, nth, span, error, false);
}

void FakeOperatingSystem::Throw(SystemCall call, int nth, FaultSpan span) {
  Add(call, nth, span, platform::kErrorGeneralFailure, true);
}

void FakeOperatingSystem::Add(SystemCall call, int nth, FaultSpan span, Dword error, bool isThrown) {
  const int first = Count(call) + nth;
  const int last = span == FaultSpan::Once ? first : std::numeric_limits<int>::max();
  faults_.insert({call, {first, last, error, isThrown}});
}

// Records the call. Where it fails, sets the error number or throws.
template <class... Arguments>
bool FakeOperatingSystem::IsMadeToFail(SystemCall call, const char* name, const Arguments&... arguments) {
  if (isRecording_) {
    calls_.push_back(std::string(name) + "(" + Joined(arguments...) + ")");
  }
  const int index = ++Count(call);
  const auto [begin, end] = faults_.equal_range(call);
  const auto fault = std::find_if(
      begin, end, [&](const auto& each) { return index >= each.second.first && index <= each.second.last; });
  if (fault == end) {
    return false;
  }
  ++failures_;
  if (fault->second.isThrown) {
    throw std::filesystem::filesystem_error("made to fail", std::make_error_code(std::errc::invalid_argument));
  }
  lastError_ = fault->second.error;
  return true;
}

// A failure of the real system sets the real error number. A success leaves the number alone, as it does there.
bool FakeOperatingSystem::Delegated(bool result) {
  if (!result) {
    lastError_.reset();
  }
  return result;
}

std::string FakeOperatingSystem::TokenName(UserToken value) const { return value == token ? "token" : "other"; }

Dword FakeOperatingSystem::WTSGetActiveConsoleSessionId() {
  IsMadeToFail(SystemCall::WTSGetActiveConsoleSessionId, "WTSGetActiveConsoleSessionId");
  return session;
}

bool FakeOperatingSystem::WTSQueryUserToken(Dword ofSession, UserToken* result) {
  if (IsMadeToFail(SystemCall::WTSQueryUserToken, "WTSQueryUserToken", ofSession)) {
    return false;
  }
  *result = token;
  return true;
}

int FakeOperatingSystem::ImpersonateLoggedOnUser(UserToken value) {
  return IsMadeToFail(SystemCall::ImpersonateLoggedOnUser, "ImpersonateLoggedOnUser", TokenName(value))
             ? 0
             : impersonationResult;
}

bool FakeOperatingSystem::RevertToSelf() { return !IsMadeToFail(SystemCall::RevertToSelf, "RevertToSelf"); }

bool FakeOperatingSystem::GetUserNameSamCompatible(wchar_t* buffer, Dword* size) {
  if (IsMadeToFail(SystemCall::GetUserNameSamCompatible, "GetUserNameSamCompatible", *size)) {
    std::copy(leftByFailedLookup.begin(), leftByFailedLookup.end(), buffer);
    return false;
  }
  const auto length = static_cast<Dword>(samName.size());
  const bool fits = length < *size;
  *size = fits ? length : length + 1;
  if (!fits) {
    lastError_ = platform::kErrorMoreData;
    return false;
  }
  std::copy_n(samName.c_str(), length + 1, buffer);
  return true;
}

bool FakeOperatingSystem::CloseHandle(UserToken value) {
  return !IsMadeToFail(SystemCall::CloseHandle, "CloseHandle", TokenName(value));
}

Dword FakeOperatingSystem::GetLastError() {
  IsMadeToFail(SystemCall::GetLastError, "GetLastError");
  return lastError_ ? *lastError_ : RealOperatingSystem().GetLastError();
}

Dword FakeOperatingSystem::GetFileAttributesW(const std::wstring& path) {
  if (IsMadeToFail(SystemCall::GetFileAttributesW, "GetFileAttributesW", path)) {
    return platform::kInvalidFileAttributes;
  }
  const Dword attributes = RealOperatingSystem().GetFileAttributesW(path);
  Delegated(attributes != platform::kInvalidFileAttributes);
  return attributes;
}

bool FakeOperatingSystem::MoveFileW(const std::wstring& from, const std::wstring& to) {
  return !IsMadeToFail(SystemCall::MoveFileW, "MoveFileW", from, to) &&
         Delegated(RealOperatingSystem().MoveFileW(from, to));
}

bool FakeOperatingSystem::DeleteFileW(const std::wstring& path) {
  return !IsMadeToFail(SystemCall::DeleteFileW, "DeleteFileW", path) &&
         Delegated(RealOperatingSystem().DeleteFileW(path));
}

bool FakeOperatingSystem::Exists(const std::wstring& path) {
  return !IsMadeToFail(SystemCall::Exists, "Exists", path) && RealOperatingSystem().Exists(path);
}

bool FakeOperatingSystem::CreateDirectories(const std::wstring& path) {
  return !IsMadeToFail(SystemCall::CreateDirectories, "CreateDirectories", path) &&
         RealOperatingSystem().CreateDirectories(path);
}

void FakeOperatingSystem::AddOwnerAllOthersRead(const std::wstring& path) {
  if (!IsMadeToFail(SystemCall::AddOwnerAllOthersRead, "AddOwnerAllOthersRead", path)) {
    RealOperatingSystem().AddOwnerAllOthersRead(path);
  }
}

bool FakeOperatingSystem::ReadSharedFile(const std::wstring& path, std::size_t limitBytes, std::string* bytes) {
  return !IsMadeToFail(SystemCall::ReadSharedFile, "ReadSharedFile", path) &&
         Delegated(RealOperatingSystem().ReadSharedFile(path, limitBytes, bytes));
}

bool FakeOperatingSystem::ListFiles(const std::wstring& directory, std::vector<std::wstring>* names) {
  return !IsMadeToFail(SystemCall::ListFiles, "ListFiles", directory) &&
         Delegated(RealOperatingSystem().ListFiles(directory, names));
}

bool FakeOperatingSystem::SyncDirectory(const std::wstring& path) {
  return !IsMadeToFail(SystemCall::SyncDirectory, "SyncDirectory", path) &&
         Delegated(RealOperatingSystem().SyncDirectory(path));
}

std::string FakeOperatingSystem::SqliteFileName(const std::string& path) {
  IsMadeToFail(SystemCall::SqliteFileName, "SqliteFileName", path);
  return RealOperatingSystem().SqliteFileName(path);
}

}  // namespace support
