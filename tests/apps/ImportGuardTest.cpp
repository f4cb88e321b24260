// The file that keeps the import from running twice.
#include "apps/marnock-host/ImportGuard.h"

#include <gtest/gtest.h>

#include "tests/apps/ExpectedError.h"
#include "tests/platform/ipc/IpcTestSystem.h"
#include "tests/support/ConsoleProfile.h"
#include "tests/support/FakeOperatingSystem.h"
#include "tests/support/LogCapture.h"

namespace {

using support::ErrorOf;

constexpr char kGuardName[] = "G12NJ9DS39D.db";

class ImportGuard : public ::testing::Test {
 protected:
  PrivatePipes machine;  // on POSIX a machine of the test's own
  support::ConsoleProfile profile;
  support::FakeOperatingSystem system{profile.SamName()};
  support::LogCapture log;
};

TEST_F(ImportGuard, IsCreatedEmptyAndFoundFromThenOn) {
  profile.MakeDatabaseFolder();
  const KT::ImportGuard before;
  EXPECT_FALSE(before.Exists());
  before.Create();
  EXPECT_TRUE(std::filesystem::is_regular_file(profile.NativeFile(kGuardName)));
  EXPECT_EQ(std::filesystem::file_size(profile.NativeFile(kGuardName)), 0U);
  EXPECT_TRUE(KT::ImportGuard().Exists());
  EXPECT_FALSE(before.Exists());  // it says what was when it was made
}

TEST_F(ImportGuard, LooksForTheNameWithoutAPrefix) {
  profile.MakeDatabaseFolder();
  support::WriteBytes(profile.NativeFile("CurrentZentapDeviceInfo1G12NJ9DS39D.db"), "x");
  EXPECT_FALSE(KT::ImportGuard().Exists());
}

TEST_F(ImportGuard, LeavesWhatIsInTheFile) {
  profile.MakeDatabaseFolder();
  const KT::ImportGuard guard;
  support::WriteBytes(profile.NativeFile(kGuardName), "written meanwhile");
  guard.Create();
  EXPECT_EQ(support::ReadBytes(profile.NativeFile(kGuardName)), "written meanwhile");
}

TEST_F(ImportGuard, AFolderOfTheNameIsNoGuardAndInItsWay) {
  std::filesystem::create_directories(profile.NativeFile(kGuardName));
  const KT::ImportGuard guard;
  EXPECT_FALSE(guard.Exists());
  EXPECT_EQ(
      ErrorOf([&] { guard.Create(); }),
      "the import's guard file cannot be created, so the next start would import again: " + profile.File(kGuardName));
}

TEST_F(ImportGuard, CannotBeCreatedWithoutAFolder) {
  const KT::ImportGuard guard;
  EXPECT_FALSE(guard.Exists());
  EXPECT_EQ(
      ErrorOf([&] { guard.Create(); }),
      "the import's guard file cannot be created, so the next start would import again: " + profile.File(kGuardName));
}

TEST_F(ImportGuard, CannotBeCreatedForAnUnknownUser) {
  system.samName.clear();
  const KT::ImportGuard guard;
  EXPECT_FALSE(guard.Exists());
  EXPECT_EQ(ErrorOf([&] { guard.Create(); }),
            "the import's guard file cannot be created, so the next start would import again: the console user is not "
            "known");
}

}  // namespace
