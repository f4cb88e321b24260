#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <string>

#include "platform/OperatingSystem.h"
#include "tests/platform/ScratchMachine.h"

namespace platform {
namespace {

mode_t ModeOf(const std::filesystem::path& path) {
  struct stat status {};
  EXPECT_EQ(stat(path.c_str(), &status), 0);
  return status.st_mode & 07777U;
}

// Signs `name` in at the console for one test.
class ConsoleUser {
 public:
  explicit ConsoleUser(const char* name) { setenv("MARNOCK_CONSOLE_USER", name, 1); }
  ~ConsoleUser() { unsetenv("MARNOCK_CONSOLE_USER"); }
  ConsoleUser(const ConsoleUser&) = delete;
  ConsoleUser& operator=(const ConsoleUser&) = delete;
};

std::wstring UserName() {
  std::array<wchar_t, 260> buffer{};
  Dword size = buffer.size();
  EXPECT_TRUE(RealOperatingSystem().GetUserNameSamCompatible(buffer.data(), &size));
  return {buffer.data(), size};
}

TEST(PosixPermissions, AddOwnerAllAndOthersReadAndKeepTheRest) {
  const testing_support::ScratchMachine machine;
  std::filesystem::create_directory(machine.RealPath(L"a"));
  for (const auto& [before, after] : {std::pair<mode_t, mode_t>{0, 0704}, {0050, 0754}, {01777, 01777}}) {
    ASSERT_EQ(chmod(machine.RealPath(L"a").c_str(), before), 0);
    RealOperatingSystem().AddOwnerAllOthersRead(machine.Path(L"a"));
    EXPECT_EQ(ModeOf(machine.RealPath(L"a")), after);
  }
}

TEST(PosixFolders, AreCreatedAsTheUmaskSays) {
  const testing_support::ScratchMachine machine;
  const mode_t before = umask(077);
  RealOperatingSystem().CreateDirectories(machine.Path(L"a\\b"));
  umask(before);
  EXPECT_EQ(ModeOf(machine.RealPath(L"a")), mode_t{0700});
  EXPECT_EQ(ModeOf(machine.RealPath(L"a/b")), mode_t{0700});
}

TEST(PosixFileAttributes, OfALinkThatLeadsNowhereAreInvalid) {
  const testing_support::ScratchMachine machine;
  std::filesystem::create_symlink("nowhere", machine.RealPath(L"link"));
  EXPECT_EQ(RealOperatingSystem().GetFileAttributesW(machine.Path(L"link")), kInvalidFileAttributes);
}

TEST(PosixMoveFile, RefusesALinkThatLeadsNowhereAsTarget) {
  const testing_support::ScratchMachine machine;
  machine.WriteFile(L"a", "from");
  std::filesystem::create_symlink("nowhere", machine.RealPath(L"link"));
  EXPECT_FALSE(RealOperatingSystem().MoveFileW(machine.Path(L"a"), machine.Path(L"link")));
  EXPECT_EQ(RealOperatingSystem().GetLastError(), kErrorAlreadyExists);
}

TEST(PosixUserName, IsWhatTheEnvironmentSays) {
  const ConsoleUser user("PC01\\alice\xC3\xA9\xF0\x9F\x98\x80");
  EXPECT_EQ(UserName(), L"PC01\\alice\u00e9\U0001F600");
}

TEST(PosixUserName, IsTheEffectiveUserOfThisMachineByDefault) {
  std::array<char, 256> host{};
  ASSERT_EQ(gethostname(host.data(), host.size() - 1), 0);
  const std::wstring name = UserName();
  EXPECT_EQ(name.substr(0, name.find(L'\\')), std::wstring(host.begin(), std::find(host.begin(), host.end(), '\0')));
  EXPECT_EQ(geteuid() == 0, name.ends_with(L"\\root"));
}

TEST(PosixUserName, IsTheDefaultWhereTheEnvironmentIsEmpty) {
  const std::wstring byDefault = UserName();
  const ConsoleUser user("");
  EXPECT_EQ(UserName(), byDefault);
}

TEST(PosixUserName, OfTwoHundredAndFiftyNineCharactersFits) {
  const ConsoleUser user(std::string(259, 'a').c_str());
  EXPECT_EQ(UserName(), std::wstring(259, L'a'));
}

TEST(PosixUserName, OfTwoHundredAndSixtyCharactersDoesNotFit) {
  const ConsoleUser user(std::string(260, 'a').c_str());
  std::array<wchar_t, 260> buffer{};
  Dword size = buffer.size();
  EXPECT_FALSE(RealOperatingSystem().GetUserNameSamCompatible(buffer.data(), &size));
  EXPECT_EQ(size, 261U);
  EXPECT_EQ(buffer[0], L'\0');
}

TEST(PosixTokens, DoNotExist) {
  OperatingSystem& system = RealOperatingSystem();
  UserToken token = &system;
  EXPECT_EQ(system.WTSGetActiveConsoleSessionId(), 1U);
  EXPECT_FALSE(system.WTSQueryUserToken(1, &token));
  EXPECT_EQ(system.GetLastError(), kErrorNoToken);
  EXPECT_EQ(system.ImpersonateLoggedOnUser(token), 0);
  EXPECT_EQ(system.GetLastError(), kErrorInvalidHandle);
  EXPECT_TRUE(system.RevertToSelf());
  EXPECT_FALSE(system.CloseHandle(token));
}

TEST(PosixSqliteFileName, LiesInTheMachineRoot) {
  setenv("MARNOCK_ROOT", "/machine", 1);
  EXPECT_EQ(RealOperatingSystem().SqliteFileName("C:\\Users\\alic\xC3\xA9\\a.db"),
            "/machine/C/Users/alic\xC3\xA9/a.db");
  unsetenv("MARNOCK_ROOT");
}

}  // namespace
}  // namespace platform
