#include "platform/MachineRoot.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <string>

namespace platform {
namespace {

// Sets the three variables that matter (null: unset) for one test.
class MachineRootFolder : public testing::Test {
 protected:
  ~MachineRootFolder() override {
    for (const auto& [name, value] : before_) {
      Set(name.c_str(), value.second ? value.first.c_str() : nullptr);
    }
  }

  static void Set(const char* name, const char* value) { value == nullptr ? unsetenv(name) : setenv(name, value, 1); }

  static void Environment(const char* root, const char* data, const char* home) {
    Set("MARNOCK_ROOT", root);
    Set("XDG_DATA_HOME", data);
    Set("HOME", home);
  }

 private:
  static std::map<std::string, std::pair<std::string, bool>> Snapshot() {
    std::map<std::string, std::pair<std::string, bool>> result;
    for (const char* const name : {"MARNOCK_ROOT", "XDG_DATA_HOME", "HOME"}) {
      const char* const value = std::getenv(name);
      result[name] = {value == nullptr ? "" : value, value != nullptr};
    }
    return result;
  }

  std::map<std::string, std::pair<std::string, bool>> before_ = Snapshot();
};

TEST_F(MachineRootFolder, IsWhatItsOwnVariableSays) {
  Environment("/root", "/data", "/home/alice");
  EXPECT_EQ(MachineRoot(), "/root");
}

TEST_F(MachineRootFolder, IsInTheDataFolderOtherwise) {
  Environment(nullptr, "/data", "/home/alice");
  EXPECT_EQ(MachineRoot(), "/data/marnock");
}

TEST_F(MachineRootFolder, IsInTheHomeFolderLast) {
  Environment(nullptr, nullptr, "/home/alice");
  EXPECT_EQ(MachineRoot(), "/home/alice/.local/share/marnock");
}

TEST_F(MachineRootFolder, TreatsEmptyVariablesAsUnset) {
  Environment("", "", "/home/alice");
  EXPECT_EQ(MachineRoot(), "/home/alice/.local/share/marnock");
}

TEST_F(MachineRootFolder, IgnoresARelativeDataFolder) {
  Environment(nullptr, "data", "/home/alice");
  EXPECT_EQ(MachineRoot(), "/home/alice/.local/share/marnock");
}

TEST_F(MachineRootFolder, LosesItsTrailingSlashes) {
  Environment("/root//", nullptr, "/home/alice");
  EXPECT_EQ(MachineRoot(), "/root");
  Environment(nullptr, "/data/", "/home/alice");
  EXPECT_EQ(MachineRoot(), "/data/marnock");
  Environment(nullptr, nullptr, "/");
  EXPECT_EQ(MachineRoot(), "/.local/share/marnock");
}

TEST_F(MachineRootFolder, IsFoundInTheUserDatabaseWithoutAHome) {
  Environment(nullptr, nullptr, nullptr);
  const std::string root = MachineRoot();
  EXPECT_TRUE(root.starts_with('/')) << root;
  EXPECT_TRUE(root.ends_with("/.local/share/marnock")) << root;
  EXPECT_NE(root, "/.local/share/marnock");
}

TEST_F(MachineRootFolder, HoldsWindowsPaths) {
  Environment("/root", nullptr, nullptr);
  EXPECT_EQ(PathInMachineRoot("C:\\a\\b"), "/root/C/a/b");
  EXPECT_EQ(PathInMachineRoot("C:\\a\\"), "/root/C/a/");
  EXPECT_EQ(PathInMachineRoot("C:\\alic\xC3\xA9:b"), "/root/C/alic\xC3\xA9:b");
}

TEST_F(MachineRootFolder, LeavesAnEmptyPathEmpty) {
  Environment("/root", nullptr, nullptr);
  EXPECT_EQ(PathInMachineRoot(""), "");
}

TEST_F(MachineRootFolder, MayBeTheWholeFileSystem) {
  Environment("/", nullptr, nullptr);
  EXPECT_EQ(PathInMachineRoot("C:\\a"), "/C/a");
}

}  // namespace
}  // namespace platform
