#include "host/Utils.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/ConsoleProfile.h"
#include "tests/support/FakeOperatingSystem.h"
#include "tests/support/LogCapture.h"

namespace {

using support::ConsoleProfile;
using support::FakeOperatingSystem;
using support::LogCapture;
using support::SystemCall;
using support::WriteBytes;
using Lines = std::vector<std::string>;

constexpr const wchar_t* kSubPath = L"\\Orvnta\\DeviceMgr\\";

TEST(GetCurrentUserName, AsksAsTheConsoleUserAndGoesBack) {
  FakeOperatingSystem system(L"PC01\\alice");
  system.session = 7;
  const LogCapture log;

  EXPECT_EQ(KT::Utils::GetCurrentUserName(), L"PC01\\alice");

  EXPECT_EQ(system.Calls(),
            (Lines{"WTSGetActiveConsoleSessionId()", "WTSQueryUserToken(7)", "ImpersonateLoggedOnUser(token)",
                   "GetUserNameSamCompatible(260)", "RevertToSelf()", "CloseHandle(token)"}));
  EXPECT_EQ(log.Lines(), Lines{});
}

TEST(GetCurrentUserName, AsksAsTheServiceWhenThereIsNoToken) {
  FakeOperatingSystem system(L"PC01\\SYSTEM");
  system.Fail(SystemCall::WTSQueryUserToken, 1, platform::kErrorNoToken);
  const LogCapture log;

  EXPECT_EQ(KT::Utils::GetCurrentUserName(), L"PC01\\SYSTEM");

  EXPECT_EQ(system.Calls(),
            (Lines{"WTSGetActiveConsoleSessionId()", "WTSQueryUserToken(1)", "GetUserNameSamCompatible(260)"}));
  EXPECT_EQ(log.Lines(), Lines{});
}

TEST(GetCurrentUserName, ClosesTheTokenButDoesNotRevertAnImpersonationThatFailed) {
  for (const int result : {0, 2, -1}) {
    FakeOperatingSystem system(L"PC01\\alice");
    system.impersonationResult = result;

    EXPECT_EQ(KT::Utils::GetCurrentUserName(), L"PC01\\alice");

    EXPECT_EQ(system.Calls(),
              (Lines{"WTSGetActiveConsoleSessionId()", "WTSQueryUserToken(1)", "ImpersonateLoggedOnUser(token)",
                     "GetUserNameSamCompatible(260)", "CloseHandle(token)"}))
        << result;
  }
}

TEST(GetCurrentUserName, LogsAFailedLookupBeforeItGoesBack) {
  FakeOperatingSystem system(L"PC01\\alice");
  system.Fail(SystemCall::GetUserNameSamCompatible, 1, 1722);
  const LogCapture log;

  EXPECT_EQ(KT::Utils::GetCurrentUserName(), L"");

  EXPECT_EQ(system.Calls(),
            (Lines{"WTSGetActiveConsoleSessionId()", "WTSQueryUserToken(1)", "ImpersonateLoggedOnUser(token)",
                   "GetUserNameSamCompatible(260)", "GetLastError()", "RevertToSelf()", "CloseHandle(token)"}));
  EXPECT_EQ(log.Lines(), Lines{"3 [KTData] Get user name failed:1722(KT::Utils::GetCurrentUserName)"});
}

TEST(GetCurrentUserName, GivesWhatAFailedLookupLeftInTheBuffer) {
  FakeOperatingSystem system(L"PC01\\alice");
  system.Fail(SystemCall::GetUserNameSamCompatible, 1);
  system.leftByFailedLookup = L"PC01\\al";

  EXPECT_EQ(KT::Utils::GetCurrentUserName(), L"PC01\\al");
}

TEST(GetCurrentUserName, EndsAtTheFirstZeroCharacter) {
  const FakeOperatingSystem system(std::wstring(L"PC01\\alice\0\\bob", 15));

  EXPECT_EQ(KT::Utils::GetCurrentUserName(), L"PC01\\alice");
}

TEST(GetCurrentUserName, HoldsANameOf259Characters) {
  const std::wstring name = L"PC01\\" + std::wstring(254, L'a');
  const FakeOperatingSystem system(name);
  const LogCapture log;

  EXPECT_EQ(KT::Utils::GetCurrentUserName(), name);
  EXPECT_EQ(log.Lines(), Lines{});
}

TEST(GetCurrentUserName, DoesNotFindANameOf260Characters) {
  const FakeOperatingSystem system(L"PC01\\" + std::wstring(255, L'a'));
  const LogCapture log;

  EXPECT_EQ(KT::Utils::GetCurrentUserName(), L"");
  EXPECT_EQ(log.Lines(), Lines{"3 [KTData] Get user name failed:234(KT::Utils::GetCurrentUserName)"});
}

TEST(GetCurrUserDefinePath, PutsTheAccountWithoutItsMachineBelowTheProfiles) {
  const FakeOperatingSystem system(L"PC01\\alice");
  const LogCapture log;

  EXPECT_EQ(KT::Utils::GetCurrUserDefinePath(kSubPath), L"C:\\Users\\alice\\Orvnta\\DeviceMgr\\");
  EXPECT_EQ(log.Lines(), Lines{});
}

TEST(GetCurrUserDefinePath, UsesANameWithoutABackslashWhole) {
  const FakeOperatingSystem system(L"alice");

  EXPECT_EQ(KT::Utils::GetCurrUserDefinePath(kSubPath), L"C:\\Users\\alice\\Orvnta\\DeviceMgr\\");
}

TEST(GetCurrUserDefinePath, KeepsWhatFollowsTheLastBackslash) {
  const FakeOperatingSystem system(L"FOREST\\PC01\\J\u00fcrgen M");

  EXPECT_EQ(KT::Utils::GetCurrUserDefinePath(L"\\x"), L"C:\\Users\\J\u00fcrgen M\\x");
}

TEST(GetCurrUserDefinePath, AddsNoSeparator) {
  const FakeOperatingSystem system(L"PC01\\alice");

  EXPECT_EQ(KT::Utils::GetCurrUserDefinePath(L"x"), L"C:\\Users\\alicex");
  EXPECT_EQ(KT::Utils::GetCurrUserDefinePath(L""), L"C:\\Users\\alice");
}

TEST(GetCurrUserDefinePath, LogsOnceForANameThatIsEmpty) {
  FakeOperatingSystem system(L"");
  system.Fail(SystemCall::CloseHandle, 1, 6);
  const LogCapture log;

  EXPECT_EQ(KT::Utils::GetCurrUserDefinePath(kSubPath), L"");

  EXPECT_EQ(system.Calls().back(), "GetLastError()");
  EXPECT_EQ(log.Lines(), Lines{"4 [KTData] Get current username failed:6(KT::Utils::GetCurrUserDefinePath)"});
}

TEST(GetCurrUserDefinePath, ReadsTheErrorNumberAgainAfterTheLookup) {
  FakeOperatingSystem system(L"PC01\\alice");
  system.Fail(SystemCall::GetUserNameSamCompatible, 1, 1722);
  system.Fail(SystemCall::RevertToSelf, 1, 1314);
  const LogCapture log;

  EXPECT_EQ(KT::Utils::GetCurrUserDefinePath(kSubPath), L"");

  EXPECT_EQ(log.Lines(), (Lines{"3 [KTData] Get user name failed:1722(KT::Utils::GetCurrentUserName)",
                                "4 [KTData] Get current username failed:1314(KT::Utils::GetCurrUserDefinePath)"}));
}

class CreateDir : public testing::Test {
 protected:
  const ConsoleProfile profile_;
  FakeOperatingSystem system_{profile_.SamName()};
  const LogCapture log_;
  const std::wstring path_ = profile_.Root() + kSubPath;
  const std::string utf8Path_ = profile_.File("");

  std::string Call(const std::string& name) const { return name + "(" + utf8Path_ + ")"; }
};

TEST_F(CreateDir, MakesEveryMissingLevelAndOpensTheLastOne) {
  EXPECT_TRUE(KT::Utils::CreateDir(path_));

  EXPECT_TRUE(std::filesystem::is_directory(profile_.NativeFile("")));
  const auto wanted = std::filesystem::perms::owner_all | std::filesystem::perms::others_read;
  EXPECT_EQ(std::filesystem::status(profile_.NativeFile("")).permissions() & wanted, wanted);
  EXPECT_EQ(system_.Calls(),
            (Lines{Call("Exists"), Call("CreateDirectories"), Call("Exists"), Call("AddOwnerAllOthersRead")}));
  EXPECT_EQ(log_.Lines(), Lines{});
}

TEST_F(CreateDir, LeavesAnExistingDirectoryAsItIs) {
  profile_.MakeDatabaseFolder();

  EXPECT_TRUE(KT::Utils::CreateDir(path_));

  EXPECT_EQ(system_.Calls(), Lines{Call("Exists")});
}

TEST_F(CreateDir, LogsWhenNothingWasMadeWithoutAnError) {
  system_.Fail(SystemCall::CreateDirectories, 1);

  EXPECT_FALSE(KT::Utils::CreateDir(path_));

  EXPECT_EQ(system_.Calls(), (Lines{Call("Exists"), Call("CreateDirectories")}));
  EXPECT_EQ(log_.Lines(), Lines{"4 [KTData] Create directory failed.(KT::Utils::CreateDir)"});
}

TEST_F(CreateDir, SucceedsWhenThePathIsNotThereAfterwards) {
  system_.Fail(SystemCall::Exists, 2);

  EXPECT_TRUE(KT::Utils::CreateDir(path_));

  EXPECT_EQ(system_.Calls(), (Lines{Call("Exists"), Call("CreateDirectories"), Call("Exists")}));
  EXPECT_EQ(log_.Lines(), Lines{});
}

TEST_F(CreateDir, PassesOnErrorsOfTheFileSystem) {
  for (const SystemCall call : {SystemCall::Exists, SystemCall::CreateDirectories, SystemCall::AddOwnerAllOthersRead}) {
    const ConsoleProfile profile;
    system_.Throw(call, 1);
    EXPECT_THROW(KT::Utils::CreateDir(profile.Root() + kSubPath), std::filesystem::filesystem_error);
  }
  EXPECT_EQ(log_.Lines(), Lines{});
}

TEST_F(CreateDir, PassesOnTheRealErrorOfAFileInTheWay) {
  WriteBytes(profile_.NativeRoot(), "a file where the profile should be");

  EXPECT_THROW(KT::Utils::CreateDir(path_), std::filesystem::filesystem_error);
}

}  // namespace
