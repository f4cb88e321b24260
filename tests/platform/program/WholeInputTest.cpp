#include "platform/program/WholeInput.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "tests/platform/ScratchMachine.h"

namespace platform {
namespace {

class WholeFile : public testing::Test {
 protected:
  std::string Read(const std::wstring& name, std::size_t limitBytes) const {
    const std::u8string path = machine_.RealPath(name).u8string();
    return ReadWholeFile({path.begin(), path.end()}, limitBytes);
  }

  // The text of the error that reading raises.
  std::string Refusal(const std::wstring& name, std::size_t limitBytes) const {
    try {
      return "read: " + Read(name, limitBytes);
    } catch (const std::runtime_error& error) {
      return error.what();
    }
  }

  testing_support::ScratchMachine machine_;
};

TEST_F(WholeFile, IsReadByteForByte) {
  const std::string bytes("a\r\nb\x1A\0c\n", 8);
  machine_.WriteFile(L"a", bytes);
  EXPECT_EQ(Read(L"a", 8), bytes);
}

TEST_F(WholeFile, MayHaveANameBeyondAscii) {
  machine_.WriteFile(L"\u00e9\u4e2d\U0001F600", "content");
  EXPECT_EQ(Read(L"\u00e9\u4e2d\U0001F600", 100), "content");
}

TEST_F(WholeFile, MayBeEmpty) {
  machine_.WriteFile(L"a", "");
  EXPECT_EQ(Read(L"a", 0), "");
}

TEST_F(WholeFile, IsRefusedFromOneByteOverTheLimit) {
  for (const std::size_t size : {1U, 16383U, 16384U, 16385U, 100'000U}) {
    machine_.WriteFile(L"a", std::string(size, 'x'));
    EXPECT_EQ(Read(L"a", size).size(), size);
    const std::string reason = ": it holds more than " + std::to_string(size - 1) + " bytes";
    EXPECT_TRUE(Refusal(L"a", size - 1).ends_with(reason)) << Refusal(L"a", size - 1);
  }
}

TEST_F(WholeFile, ThatIsMissingIsNamed) {
  const std::string refusal = Refusal(L"missing.json", 100);
  EXPECT_TRUE(refusal.starts_with("cannot read ")) << refusal;
  EXPECT_NE(refusal.find("missing.json: "), std::string::npos) << refusal;
}

TEST_F(WholeFile, MayNotBeAFolder) {
  const std::string refusal = Refusal(L"", 100);
  EXPECT_TRUE(refusal.starts_with("cannot read ")) << refusal;
}

}  // namespace
}  // namespace platform
