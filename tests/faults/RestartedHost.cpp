#include "tests/faults/RestartedHost.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>

#include "apps/recovery/StoreRepair.h"
#include "tests/persistence/EngineTest.h"

namespace faults {

namespace {

// Whether there are only database files: a save that was cut short leaves more.
bool IsTidy(const std::filesystem::path& folder) {
  return std::all_of(std::filesystem::directory_iterator(folder), {},
                     [](const auto& entry) { return entry.path().extension() == ".db"; });
}

}  // namespace

RestartedHost::RestartedHost() { copy_.MakeDatabaseFolder(); }

std::vector<std::string> RestartedHost::Rows(const support::ConsoleProfile& original, const std::string& file,
                                             const std::string& sql) {
  const bool isTidy = IsTidy(original.NativeFile("")) && std::filesystem::exists(original.NativeFile(file));
  if (!isTidy) {
    CopyFolderOf(original);
    Repair();
  }
  const auto path = (isTidy ? original : copy_).NativeFile(file);
  if (!std::filesystem::exists(path)) {
    return {};
  }
  SQLite::Database database = OpenNative(path);
  EXPECT_EQ(::Rows(database, "PRAGMA integrity_check"), Lines{"ok"});
  return ::Rows(database, sql);
}

void RestartedHost::CopyFolderOf(const support::ConsoleProfile& original) const {
  for (const auto& entry : std::filesystem::directory_iterator(copy_.NativeFile(""))) {
    std::filesystem::remove(entry.path());
  }
  for (const auto& entry : std::filesystem::directory_iterator(original.NativeFile(""))) {
    support::WriteBytes(copy_.NativeFile("") / entry.path().filename(), support::ReadBytes(entry.path()));
  }
}

void RestartedHost::Repair() const {
  const KT::RepairHooks hooks{[](std::chrono::milliseconds) { ADD_FAILURE() << "the repair waits for a file"; },
                              [] { return std::chrono::system_clock::time_point(); },
                              [](const std::string& text, bool isLoss) { EXPECT_FALSE(isLoss) << text; }};
  bool anyLoss = false;
  const auto refusal = KT::RepairStore(copy_.Root() + L"\\Orvnta\\DeviceMgr\\", hooks, anyLoss);
  EXPECT_FALSE(refusal.has_value()) << *refusal;
  EXPECT_FALSE(anyLoss);
}

}  // namespace faults
