#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "platform/OperatingSystem.h"
#include "tests/platform/ScratchMachine.h"

namespace platform {
namespace {

TEST(WindowsMoveFile, SaysWhenTheFileIsOpen) {
  const testing_support::ScratchMachine machine;
  machine.WriteFile(L"a", "");
  HANDLE const open =
      CreateFileW(machine.Path(L"a").c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(open, INVALID_HANDLE_VALUE);
  EXPECT_FALSE(RealOperatingSystem().MoveFileW(machine.Path(L"a"), machine.Path(L"b")));
  EXPECT_EQ(RealOperatingSystem().GetLastError(), Dword{ERROR_SHARING_VIOLATION});
  CloseHandle(open);
  EXPECT_TRUE(RealOperatingSystem().MoveFileW(machine.Path(L"a"), machine.Path(L"b")));
}

TEST(WindowsReadSharedFile, ReadsAFileThatAnotherProgramHasOpenForWriting) {
  const testing_support::ScratchMachine machine;
  machine.WriteFile(L"a", "content");
  HANDLE const open = CreateFileW(machine.Path(L"a").c_str(), GENERIC_READ | GENERIC_WRITE,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(open, INVALID_HANDLE_VALUE);
  std::string bytes;
  EXPECT_TRUE(RealOperatingSystem().ReadSharedFile(machine.Path(L"a"), 100, &bytes));
  EXPECT_EQ(bytes, "content");
  CloseHandle(open);
}

TEST(WindowsReadSharedFile, SaysWhenAnotherProgramKeepsTheFileToItself) {
  const testing_support::ScratchMachine machine;
  machine.WriteFile(L"a", "content");
  HANDLE const open = CreateFileW(machine.Path(L"a").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(open, INVALID_HANDLE_VALUE);
  std::string bytes;
  EXPECT_FALSE(RealOperatingSystem().ReadSharedFile(machine.Path(L"a"), 100, &bytes));
  EXPECT_EQ(RealOperatingSystem().GetLastError(), kErrorSharingViolation);
  CloseHandle(open);
}

TEST(WindowsPermissions, ClearAReadOnlyAttribute) {
  const testing_support::ScratchMachine machine;
  machine.WriteFile(L"a", "");
  ASSERT_NE(SetFileAttributesW(machine.Path(L"a").c_str(), FILE_ATTRIBUTE_READONLY), FALSE);
  RealOperatingSystem().AddOwnerAllOthersRead(machine.Path(L"a"));
  EXPECT_EQ(RealOperatingSystem().GetFileAttributesW(machine.Path(L"a")) & FILE_ATTRIBUTE_READONLY, 0U);
}

TEST(WindowsTokens, AreQueriedImpersonatedAndClosed) {
  OperatingSystem& system = RealOperatingSystem();
  UserToken token = nullptr;
  if (!system.WTSQueryUserToken(system.WTSGetActiveConsoleSessionId(), &token)) {
    // Only a service may do this on a real Windows; what can be told then is why it failed.
    EXPECT_EQ(system.GetLastError(), Dword{ERROR_PRIVILEGE_NOT_HELD});
    return;
  }
  EXPECT_EQ(system.ImpersonateLoggedOnUser(token), 1);
  EXPECT_TRUE(system.RevertToSelf());
  EXPECT_TRUE(system.CloseHandle(token));
}

TEST(WindowsTokens, ThatAreNoneCannotBeImpersonated) {
  EXPECT_EQ(RealOperatingSystem().ImpersonateLoggedOnUser(nullptr), 0);
  EXPECT_EQ(RealOperatingSystem().GetLastError(), kErrorInvalidHandle);
}

TEST(WindowsSqliteFileName, IsThePathItself) {
  EXPECT_EQ(RealOperatingSystem().SqliteFileName("C:\\Users\\alic\xC3\xA9\\a.db"), "C:\\Users\\alic\xC3\xA9\\a.db");
}

}  // namespace
}  // namespace platform
