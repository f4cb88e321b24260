// Reading, listing and syncing: the calls that look at files beside a program that works on them.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/OperatingSystem.h"
#include "tests/platform/ScratchMachine.h"

namespace platform {
namespace {

constexpr std::size_t kNoLimit = 1024 * 1024;

class OperatingSystemLooks : public testing::Test {
 protected:
  testing_support::ScratchMachine machine_;
  OperatingSystem& system_ = RealOperatingSystem();
  std::string bytes_;
  std::vector<std::wstring> names_;
};

using ReadSharedFile = OperatingSystemLooks;
using ListFiles = OperatingSystemLooks;
using SyncDirectory = OperatingSystemLooks;

TEST_F(ReadSharedFile, GivesTheBytesAsTheyAre) {
  const std::string content("a\r\n\0\x1a\xff", 6);
  machine_.WriteFile(L"a", content);
  bytes_ = "of another file";
  EXPECT_TRUE(system_.ReadSharedFile(machine_.Path(L"a"), kNoLimit, &bytes_));
  EXPECT_EQ(bytes_, content);
}

TEST_F(ReadSharedFile, GivesNoBytesOfAnEmptyFile) {
  machine_.WriteFile(L"a", "");
  bytes_ = "of another file";
  EXPECT_TRUE(system_.ReadSharedFile(machine_.Path(L"a"), 0, &bytes_));
  EXPECT_EQ(bytes_, "");
}

TEST_F(ReadSharedFile, ReadsUpToTheLimitAndNoFurther) {
  for (const std::size_t limit : {std::size_t{1}, std::size_t{65536}, std::size_t{100'000}}) {
    machine_.WriteFile(L"a", std::string(limit, 'x'));
    EXPECT_TRUE(system_.ReadSharedFile(machine_.Path(L"a"), limit, &bytes_));
    EXPECT_EQ(bytes_.size(), limit);
    machine_.WriteFile(L"a", std::string(limit + 1, 'x'));
    EXPECT_FALSE(system_.ReadSharedFile(machine_.Path(L"a"), limit, &bytes_));
    EXPECT_EQ(system_.GetLastError(), kErrorFileTooLarge);
  }
}

TEST_F(ReadSharedFile, SaysWhenTheFileOrItsFolderIsMissing) {
  EXPECT_FALSE(system_.ReadSharedFile(machine_.Path(L"missing"), kNoLimit, &bytes_));
  EXPECT_EQ(system_.GetLastError(), kErrorFileNotFound);
  EXPECT_FALSE(system_.ReadSharedFile(machine_.Path(L"missing\\a"), kNoLimit, &bytes_));
  EXPECT_EQ(system_.GetLastError(), kErrorPathNotFound);
}

TEST_F(ReadSharedFile, RefusesAFolder) {
  std::filesystem::create_directory(machine_.RealPath(L"folder"));
  EXPECT_FALSE(system_.ReadSharedFile(machine_.Path(L"folder"), kNoLimit, &bytes_));
  EXPECT_EQ(system_.GetLastError(), kErrorAccessDenied);
}

TEST_F(ListFiles, GivesTheNamesWithoutFolders) {
  machine_.WriteFile(L"b", "");
  machine_.WriteFile(L"\u00e9\u4e2d", "");
  std::filesystem::create_directory(machine_.RealPath(L"folder"));
  for (const wchar_t* const folder : {L"", L"."}) {
    EXPECT_TRUE(system_.ListFiles(machine_.Path(folder), &names_));
    std::sort(names_.begin(), names_.end());
    EXPECT_EQ(names_, (std::vector<std::wstring>{L"b", L"\u00e9\u4e2d"}));
  }
}

TEST_F(ListFiles, GivesNothingOfAnEmptyFolder) {
  names_ = {L"of another folder"};
  EXPECT_TRUE(system_.ListFiles(machine_.Path(), &names_));
  EXPECT_TRUE(names_.empty());
}

TEST_F(ListFiles, SaysWhenTheFolderIsMissing) {
  EXPECT_FALSE(system_.ListFiles(machine_.Path(L"missing\\"), &names_));
  EXPECT_EQ(system_.GetLastError(), kErrorPathNotFound);
}

TEST_F(SyncDirectory, IsDoneWithAndWithoutATrailingBackslash) {
  machine_.WriteFile(L"a", "");
  EXPECT_TRUE(system_.SyncDirectory(machine_.Path()));
  EXPECT_TRUE(system_.SyncDirectory(machine_.Path(L".")));
}

TEST_F(SyncDirectory, SaysWhenTheFolderIsMissing) {
  EXPECT_FALSE(system_.SyncDirectory(machine_.Path(L"missing")));
  EXPECT_EQ(system_.GetLastError(), kErrorFileNotFound);
}

}  // namespace
}  // namespace platform
