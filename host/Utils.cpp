#include "host/Utils.h"

#include <algorithm>
#include <array>

#include "host/ConsoleUserIdentity.h"
#include "platform/OperatingSystem.h"
#include "platform/logging/LogLine.h"

namespace KT::Utils {

namespace {

using platform::Dword;
using platform::OperatingSystem;

// Capacity of the name buffer, terminating zero included; a longer name counts as not found.
constexpr Dword kUserNameCharacters = 260;
constexpr const wchar_t* kProfilesFolder = L"C:\\Users\\";

}  // namespace

std::wstring GetCurrentUserName() {
  OperatingSystem& system = OperatingSystem::Get();
  const ConsoleUserIdentity identity(system);
  std::array<wchar_t, kUserNameCharacters> name{};
  Dword size = kUserNameCharacters;
  if (!system.GetUserNameSamCompatible(name.data(), &size)) {
    platform::LogProgress("KT::Utils::GetCurrentUserName", "[KTData] Get user name failed:", system.GetLastError());
  }
  return {name.begin(), std::find(name.begin(), name.end(), L'\0')};
}

std::wstring GetCurrUserDefinePath(std::wstring subPath) {
  const std::wstring name = GetCurrentUserName();
  if (name.empty()) {
    platform::LogFailure("KT::Utils::GetCurrUserDefinePath",
                         "[KTData] Get current username failed:", OperatingSystem::Get().GetLastError());
    return {};
  }
  // npos + 1 is 0: a name without a backslash is used whole.
  const std::wstring account = name.substr(name.rfind(L'\\') + 1);
  return subPath.insert(0, kProfilesFolder + account);
}

bool CreateDir(const std::wstring& path) {
  OperatingSystem& system = OperatingSystem::Get();
  if (system.Exists(path)) {
    return true;
  }
  if (!system.CreateDirectories(path)) {
    platform::LogFailure("KT::Utils::CreateDir", "[KTData] Create directory failed.");
    return false;
  }
  if (system.Exists(path)) {
    system.AddOwnerAllOthersRead(path);
  }
  return true;
}

}  // namespace KT::Utils
