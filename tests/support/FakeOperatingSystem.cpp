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

std::string CallWith(const char* name, const std::wstring& path) {
  return std::string(name) + "(" + PlenixBase::UnicodeToUTF8(path) + ")";
}

}  // namespace

FakeOperatingSystem::FakeOperatingSystem(std::wstring name)
    : samName(std::move(name)), previous_(platform::OperatingSystem::Replace(this)) {}

FakeOperatingSystem::~FakeOperatingSystem() { platform::OperatingSystem::Replace(previous_); }

void FakeOperatingSystem::Fail(SystemCall call, int nth, Dword error) {
  faults_[{call, counts_[call] + nth}] = {error, false};
}

void FakeOperatingSystem::Throw(SystemCall call, int nth) {
  faults_[{call, counts_[call] + nth}] = {platform::kErrorGeneralFailure, true};
}

// Records the call. Where it fails, sets the error number or throws.
bool FakeOperatingSystem::IsMadeToFail(SystemCall call, const std::string& description) {
  calls_.push_back(description);
  const auto fault = faults_.find({call, ++counts_[call]});
  if (fault == faults_.end()) {
    return false;
  }
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
  IsMadeToFail(SystemCall::WTSGetActiveConsoleSessionId, "WTSGetActiveConsoleSessionId()");
  return session;
}

bool FakeOperatingSystem::WTSQueryUserToken(Dword ofSession, UserToken* result) {
  if (IsMadeToFail(SystemCall::WTSQueryUserToken, "WTSQueryUserToken(" + std::to_string(ofSession) + ")")) {
    return false;
  }
  *result = token;
  return true;
}

int FakeOperatingSystem::ImpersonateLoggedOnUser(UserToken value) {
  return IsMadeToFail(SystemCall::ImpersonateLoggedOnUser, "ImpersonateLoggedOnUser(" + TokenName(value) + ")")
             ? 0
             : impersonationResult;
}

bool FakeOperatingSystem::RevertToSelf() { return !IsMadeToFail(SystemCall::RevertToSelf, "RevertToSelf()"); }

bool FakeOperatingSystem::GetUserNameSamCompatible(wchar_t* buffer, Dword* size) {
  if (IsMadeToFail(SystemCall::GetUserNameSamCompatible, "GetUserNameSamCompatible(" + std::to_string(*size) + ")")) {
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
  return !IsMadeToFail(SystemCall::CloseHandle, "CloseHandle(" + TokenName(value) + ")");
}

Dword FakeOperatingSystem::GetLastError() {
  IsMadeToFail(SystemCall::GetLastError, "GetLastError()");
  return lastError_ ? *lastError_ : RealOperatingSystem().GetLastError();
}

Dword FakeOperatingSystem::GetFileAttributesW(const std::wstring& path) {
  if (IsMadeToFail(SystemCall::GetFileAttributesW, CallWith("GetFileAttributesW", path))) {
    return platform::kInvalidFileAttributes;
  }
  const Dword attributes = RealOperatingSystem().GetFileAttributesW(path);
  Delegated(attributes != platform::kInvalidFileAttributes);
  return attributes;
}

bool FakeOperatingSystem::MoveFileW(const std::wstring& from, const std::wstring& to) {
  return !IsMadeToFail(SystemCall::MoveFileW, CallWith("MoveFileW", from + L", " + to)) &&
         Delegated(RealOperatingSystem().MoveFileW(from, to));
}

bool FakeOperatingSystem::DeleteFileW(const std::wstring& path) {
  return !IsMadeToFail(SystemCall::DeleteFileW, CallWith("DeleteFileW", path)) &&
         Delegated(RealOperatingSystem().DeleteFileW(path));
}

bool FakeOperatingSystem::Exists(const std::wstring& path) {
  return !IsMadeToFail(SystemCall::Exists, CallWith("Exists", path)) && RealOperatingSystem().Exists(path);
}

bool FakeOperatingSystem::CreateDirectories(const std::wstring& path) {
  return !IsMadeToFail(SystemCall::CreateDirectories, CallWith("CreateDirectories", path)) &&
         RealOperatingSystem().CreateDirectories(path);
}

void FakeOperatingSystem::AddOwnerAllOthersRead(const std::wstring& path) {
  if (!IsMadeToFail(SystemCall::AddOwnerAllOthersRead, CallWith("AddOwnerAllOthersRead", path))) {
    RealOperatingSystem().AddOwnerAllOthersRead(path);
  }
}

bool FakeOperatingSystem::ReadSharedFile(const std::wstring& path, std::size_t limitBytes, std::string* bytes) {
  return !IsMadeToFail(SystemCall::ReadSharedFile, CallWith("ReadSharedFile", path)) &&
         Delegated(RealOperatingSystem().ReadSharedFile(path, limitBytes, bytes));
}

bool FakeOperatingSystem::ListFiles(const std::wstring& directory, std::vector<std::wstring>* names) {
  return !IsMadeToFail(SystemCall::ListFiles, CallWith("ListFiles", directory)) &&
         Delegated(RealOperatingSystem().ListFiles(directory, names));
}

bool FakeOperatingSystem::SyncDirectory(const std::wstring& path) {
  return !IsMadeToFail(SystemCall::SyncDirectory, CallWith("SyncDirectory", path)) &&
         Delegated(RealOperatingSystem().SyncDirectory(path));
}

std::string FakeOperatingSystem::SqliteFileName(const std::string& path) {
  IsMadeToFail(SystemCall::SqliteFileName, "SqliteFileName(" + path + ")");
  return RealOperatingSystem().SqliteFileName(path);
}

}  // namespace support
