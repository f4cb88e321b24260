#include "platform/OperatingSystem.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "tests/platform/ScratchMachine.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

class OperatingSystemFiles : public testing::Test {
 protected:
  testing_support::ScratchMachine machine_;
  OperatingSystem& system_ = RealOperatingSystem();
};

using FileAttributes = OperatingSystemFiles;
using MoveFile = OperatingSystemFiles;
using DeleteFile = OperatingSystemFiles;
using Folders = OperatingSystemFiles;

// é, 中 and U+1F600: two, three and four bytes in UTF-8.
const std::wstring kForeignName = L"\u00e9\u4e2d\U0001F600.db";

TEST_F(FileAttributes, OfAFileLackTheDirectoryBit) {
  machine_.WriteFile(L"a", "");
  const Dword attributes = system_.GetFileAttributesW(machine_.Path(L"a"));
  EXPECT_NE(attributes, kInvalidFileAttributes);
  EXPECT_EQ(attributes & kFileAttributeDirectory, 0U);
}

TEST_F(FileAttributes, OfAFolderHaveTheDirectoryBit) {
  fs::create_directory(machine_.RealPath(L"folder"));
  for (const auto* const name : {L"folder", L"folder\\"}) {
    const Dword attributes = system_.GetFileAttributesW(machine_.Path(name));
    EXPECT_NE(attributes, kInvalidFileAttributes);
    EXPECT_EQ(attributes & kFileAttributeDirectory, kFileAttributeDirectory);
  }
}

TEST_F(FileAttributes, OfAMissingFileAreInvalidWithFileNotFound) {
  EXPECT_EQ(system_.GetFileAttributesW(machine_.Path(L"missing")), kInvalidFileAttributes);
  EXPECT_EQ(system_.GetLastError(), kErrorFileNotFound);
}

TEST_F(FileAttributes, InAMissingFolderAreInvalidWithPathNotFound) {
  EXPECT_EQ(system_.GetFileAttributesW(machine_.Path(L"missing\\a")), kInvalidFileAttributes);
  EXPECT_EQ(system_.GetLastError(), kErrorPathNotFound);
}

TEST_F(FileAttributes, OfNoPathAtAllAreInvalidWithPathNotFound) {
  EXPECT_EQ(system_.GetFileAttributesW(L""), kInvalidFileAttributes);
  EXPECT_EQ(system_.GetLastError(), kErrorPathNotFound);
}

TEST_F(FileAttributes, AreFoundUnderANameBeyondAscii) {
  machine_.WriteFile(kForeignName, "");
  EXPECT_NE(system_.GetFileAttributesW(machine_.Path(kForeignName)), kInvalidFileAttributes);
}

TEST_F(MoveFile, TakesTheContentToTheNewName) {
  machine_.WriteFile(L"a", "content");
  ASSERT_TRUE(system_.MoveFileW(machine_.Path(L"a"), machine_.Path(kForeignName)));
  EXPECT_FALSE(fs::exists(machine_.RealPath(L"a")));
  EXPECT_EQ(machine_.ReadFile(kForeignName), "content");
}

TEST_F(MoveFile, RefusesAnExistingTarget) {
  machine_.WriteFile(L"a", "from");
  machine_.WriteFile(L"b", "to");
  EXPECT_FALSE(system_.MoveFileW(machine_.Path(L"a"), machine_.Path(L"b")));
  EXPECT_EQ(system_.GetLastError(), kErrorAlreadyExists);
  EXPECT_EQ(machine_.ReadFile(L"a"), "from");
  EXPECT_EQ(machine_.ReadFile(L"b"), "to");
}

TEST_F(MoveFile, RefusesAFolderAsTarget) {
  machine_.WriteFile(L"a", "from");
  fs::create_directory(machine_.RealPath(L"b"));
  EXPECT_FALSE(system_.MoveFileW(machine_.Path(L"a"), machine_.Path(L"b")));
  EXPECT_EQ(system_.GetLastError(), kErrorAlreadyExists);
}

TEST_F(MoveFile, SaysWhenTheSourceIsMissing) {
  EXPECT_FALSE(system_.MoveFileW(machine_.Path(L"a"), machine_.Path(L"b")));
  EXPECT_EQ(system_.GetLastError(), kErrorFileNotFound);
}

TEST_F(MoveFile, SaysWhenEitherFolderIsMissing) {
  machine_.WriteFile(L"a", "from");
  EXPECT_FALSE(system_.MoveFileW(machine_.Path(L"a"), machine_.Path(L"missing\\b")));
  EXPECT_EQ(system_.GetLastError(), kErrorPathNotFound);
  EXPECT_FALSE(system_.MoveFileW(machine_.Path(L"missing\\a"), machine_.Path(L"b")));
  EXPECT_EQ(system_.GetLastError(), kErrorPathNotFound);
  EXPECT_EQ(machine_.ReadFile(L"a"), "from");
}

TEST_F(DeleteFile, DeletesAFile) {
  machine_.WriteFile(kForeignName, "");
  EXPECT_TRUE(system_.DeleteFileW(machine_.Path(kForeignName)));
  EXPECT_FALSE(fs::exists(machine_.RealPath(kForeignName)));
}

TEST_F(DeleteFile, SaysWhenTheFileOrItsFolderIsMissing) {
  EXPECT_FALSE(system_.DeleteFileW(machine_.Path(L"a")));
  EXPECT_EQ(system_.GetLastError(), kErrorFileNotFound);
  EXPECT_FALSE(system_.DeleteFileW(machine_.Path(L"missing\\a")));
  EXPECT_EQ(system_.GetLastError(), kErrorPathNotFound);
}

TEST_F(DeleteFile, RefusesAFolder) {
  fs::create_directory(machine_.RealPath(L"folder"));
  EXPECT_FALSE(system_.DeleteFileW(machine_.Path(L"folder")));
  EXPECT_EQ(system_.GetLastError(), kErrorAccessDenied);
  EXPECT_TRUE(fs::exists(machine_.RealPath(L"folder")));
}

TEST_F(Folders, AreCreatedThreeLevelsDeep) {
  EXPECT_FALSE(system_.Exists(machine_.Path(L"a\\b\\c")));
  EXPECT_TRUE(system_.CreateDirectories(machine_.Path(L"a\\b\\c")));
  EXPECT_TRUE(fs::is_directory(machine_.RealPath(L"a/b/c")));
  EXPECT_TRUE(system_.Exists(machine_.Path(L"a\\b\\c")));
}

TEST_F(Folders, AreCreatedWithATrailingBackslashAndANameBeyondAscii) {
  EXPECT_TRUE(system_.CreateDirectories(machine_.Path(kForeignName + L"\\b\\")));
  EXPECT_TRUE(fs::is_directory(machine_.RealPath(kForeignName + L"/b")));
  EXPECT_TRUE(system_.Exists(machine_.Path(kForeignName + L"\\b\\")));
}

TEST_F(Folders, ThatAreThereAreNotCreatedAgain) { EXPECT_FALSE(system_.CreateDirectories(machine_.Path())); }

TEST_F(Folders, CannotBeCreatedWhereAFileIs) {
  machine_.WriteFile(L"a", "");
  EXPECT_THROW(system_.CreateDirectories(machine_.Path(L"a\\b")), fs::filesystem_error);
}

TEST_F(Folders, WithoutAPathAreAnError) {
  EXPECT_FALSE(system_.Exists(L""));
  EXPECT_THROW(system_.CreateDirectories(L""), fs::filesystem_error);
}

TEST_F(Folders, ThatAreMissingHaveNoPermissions) {
  EXPECT_THROW(system_.AddOwnerAllOthersRead(machine_.Path(L"missing")), fs::filesystem_error);
}

TEST_F(Folders, GetThePermissionsWithATrailingBackslash) {
  fs::create_directory(machine_.RealPath(L"a"));
  EXPECT_NO_THROW(system_.AddOwnerAllOthersRead(machine_.Path(L"a\\")));
}

// The name as GetUserNameSamCompatible gives it in a buffer that is surely large enough.
std::wstring UserName() {
  std::wstring name(1000, L'#');
  auto size = static_cast<Dword>(name.size());
  EXPECT_TRUE(RealOperatingSystem().GetUserNameSamCompatible(name.data(), &size));
  EXPECT_EQ(name.at(size), L'\0');
  name.resize(size);
  return name;
}

TEST(UserName, IsMachineAndAccount) {
  const std::wstring name = UserName();
  const auto backslash = name.find(L'\\');
  ASSERT_NE(backslash, std::wstring::npos) << "no backslash in the name";
  EXPECT_GT(backslash, 0U);
  EXPECT_LT(backslash + 1, name.size());
}

TEST(UserName, FitsABufferWithRoomForTheZeroAndNoMore) {
  const std::wstring name = UserName();
  std::wstring buffer(name.size() + 1, L'#');
  auto size = static_cast<Dword>(buffer.size());
  EXPECT_TRUE(RealOperatingSystem().GetUserNameSamCompatible(buffer.data(), &size));
  EXPECT_EQ(size, name.size());
  EXPECT_EQ(buffer, name + L'\0');
}

TEST(UserName, LeavesABufferThatIsOneTooSmallUntouched) {
  const std::wstring name = UserName();
  std::wstring buffer(name.size(), L'#');
  auto size = static_cast<Dword>(buffer.size());
  EXPECT_FALSE(RealOperatingSystem().GetUserNameSamCompatible(buffer.data(), &size));
  EXPECT_EQ(RealOperatingSystem().GetLastError(), kErrorMoreData);
  EXPECT_EQ(size, name.size() + 1);
  EXPECT_EQ(buffer, std::wstring(name.size(), L'#'));
}

TEST_F(OperatingSystemFiles, KeepAnErrorNumberForEachThread) {
  std::atomic<int> turn{0};
  std::thread other([&] {
    while (turn != 1) std::this_thread::yield();
    EXPECT_FALSE(system_.DeleteFileW(machine_.Path(L"missing\\a")));
    EXPECT_EQ(system_.GetLastError(), kErrorPathNotFound);
    turn = 2;
  });
  EXPECT_FALSE(system_.DeleteFileW(machine_.Path(L"missing")));
  // Anything that waits properly would make system calls of its own on Windows, and these may reset the number.
  turn = 1;
  while (turn != 2) {
  }
  EXPECT_EQ(system_.GetLastError(), kErrorFileNotFound);
  other.join();
}

// Does nothing; tells itself apart by its session.
class IdleOperatingSystem final : public OperatingSystem {
 public:
  Dword WTSGetActiveConsoleSessionId() override { return 77; }
  bool WTSQueryUserToken(Dword, UserToken*) override { return false; }
  int ImpersonateLoggedOnUser(UserToken) override { return 0; }
  bool RevertToSelf() override { return false; }
  bool GetUserNameSamCompatible(wchar_t*, Dword*) override { return false; }
  bool CloseHandle(UserToken) override { return false; }
  Dword GetLastError() override { return 0; }
  Dword GetFileAttributesW(const std::wstring&) override { return 0; }
  bool MoveFileW(const std::wstring&, const std::wstring&) override { return false; }
  bool DeleteFileW(const std::wstring&) override { return false; }
  bool Exists(const std::wstring&) override { return false; }
  bool CreateDirectories(const std::wstring&) override { return false; }
  void AddOwnerAllOthersRead(const std::wstring&) override {}
  bool ReadSharedFile(const std::wstring&, std::size_t, std::string*) override { return false; }
  bool ListFiles(const std::wstring&, std::vector<std::wstring>*) override { return false; }
  bool SyncDirectory(const std::wstring&) override { return false; }
  std::string SqliteFileName(const std::string&) override { return {}; }
};

TEST(OperatingSystemInUse, IsTheRealOneUnlessReplaced) {
  IdleOperatingSystem idle;
  EXPECT_EQ(&OperatingSystem::Get(), &RealOperatingSystem());
  EXPECT_EQ(OperatingSystem::Replace(&idle), nullptr);
  EXPECT_EQ(OperatingSystem::Get().WTSGetActiveConsoleSessionId(), 77U);
  EXPECT_EQ(OperatingSystem::Replace(nullptr), &idle);
  EXPECT_EQ(&OperatingSystem::Get(), &RealOperatingSystem());
}

}  // namespace
}  // namespace platform
