#include "tests/support/MemoryMachine.h"

#include <algorithm>
#include <string_view>

#include "platform/text/PlenixBase.h"

namespace support {

namespace {

using platform::Dword;

constexpr std::wstring_view kUser = L"PC01\\alice";

std::string NameOf(const std::wstring& path) { return PlenixBase::UnicodeToUTF8(path); }

bool IsFolder(const std::wstring& path) { return path.ends_with(L'\\'); }

}  // namespace

MemoryMachine::MemoryMachine(const DiskImage& start)
    : disk_(start), vfs_(disk_), previous_(platform::OperatingSystem::Replace(this)) {}

MemoryMachine::~MemoryMachine() { platform::OperatingSystem::Replace(previous_); }

bool MemoryMachine::Fail(Dword error) {
  lastError_ = error;
  return false;
}

bool MemoryMachine::WTSQueryUserToken(Dword, platform::UserToken*) { return Fail(platform::kErrorNoToken); }

int MemoryMachine::ImpersonateLoggedOnUser(platform::UserToken) { return Fail(platform::kErrorInvalidHandle) ? 1 : 0; }

bool MemoryMachine::CloseHandle(platform::UserToken) { return Fail(platform::kErrorInvalidHandle); }

bool MemoryMachine::GetUserNameSamCompatible(wchar_t* buffer, Dword* size) {
  if (*size <= kUser.size()) {
    return Fail(platform::kErrorMoreData);
  }
  *size = static_cast<Dword>(kUser.size());
  std::copy(kUser.begin(), kUser.end(), buffer);
  buffer[kUser.size()] = L'\0';
  return true;
}

Dword MemoryMachine::GetFileAttributesW(const std::wstring& path) {
  if (IsFolder(path)) {
    return platform::kFileAttributeDirectory;
  }
  if (!disk_.Contains(NameOf(path))) {
    Fail(platform::kErrorFileNotFound);
    return platform::kInvalidFileAttributes;
  }
  return platform::kFileAttributeNormal;
}

bool MemoryMachine::MoveFileW(const std::wstring& from, const std::wstring& to) {
  return disk_.Rename(NameOf(from), NameOf(to)) ||
         Fail(disk_.Contains(NameOf(from)) ? platform::kErrorAlreadyExists : platform::kErrorFileNotFound);
}

bool MemoryMachine::DeleteFileW(const std::wstring& path) {
  return disk_.Delete(NameOf(path)) || Fail(platform::kErrorFileNotFound);
}

bool MemoryMachine::Exists(const std::wstring& path) { return IsFolder(path) || disk_.Contains(NameOf(path)); }

bool MemoryMachine::ReadSharedFile(const std::wstring& path, std::size_t limitBytes, std::string* bytes) {
  const auto file = disk_.Find(NameOf(path));
  if (file == nullptr) {
    return Fail(platform::kErrorFileNotFound);
  }
  *bytes = file->bytes;
  return bytes->size() <= limitBytes || Fail(platform::kErrorFileTooLarge);
}

bool MemoryMachine::ListFiles(const std::wstring& directory, std::vector<std::wstring>* names) {
  names->clear();
  for (const auto& [name, bytes] : disk_.Image()) {
    names->push_back(PlenixBase::UTF8ToUnicode(name).substr(directory.size()));
  }
  return true;
}

bool MemoryMachine::SyncDirectory(const std::wstring&) {
  disk_.SyncFolder();
  return true;
}

}  // namespace support
