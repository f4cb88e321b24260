// Windows: who may open the pipe, read back from the pipe itself.
#include <windows.h>
// The order matters: these need windows.h.
#include <aclapi.h>
#include <sddl.h>

#include <string>
#include <vector>

#include "platform/ipc/PipeSecurity.h"
#include "tests/platform/ipc/IpcTest.h"

namespace {

struct Entry {
  BYTE type;
  BYTE flags;
  ACCESS_MASK mask;
  std::wstring sid;
};

class WindowsPipe : public IpcTest {
 protected:
  void SetUp() override {
    StartHub();
    pipe_ = ::CreateFileW(pipeName_.c_str(), GENERIC_READ | FILE_WRITE_DATA, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(pipe_, INVALID_HANDLE_VALUE);
    PACL list = nullptr;
    ASSERT_EQ(::GetSecurityInfo(pipe_, SE_KERNEL_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, &list, nullptr,
                                &descriptor_),
              DWORD{ERROR_SUCCESS});
    ASSERT_NE(list, nullptr);
    for (DWORD i = 0; i < list->AceCount; ++i) {
      ReadEntry(list, i);
    }
  }
  void TearDown() override {
    ::LocalFree(descriptor_);
    ::CloseHandle(pipe_);
  }

  void ReadEntry(PACL list, DWORD index) {
    void* entry = nullptr;
    ASSERT_TRUE(::GetAce(list, index, &entry));
    const auto* allowed = static_cast<const ACCESS_ALLOWED_ACE*>(entry);
    LPWSTR sid = nullptr;
    ASSERT_TRUE(::ConvertSidToStringSidW(const_cast<DWORD*>(&allowed->SidStart), &sid));
    entries_.push_back({allowed->Header.AceType, allowed->Header.AceFlags, allowed->Mask, sid});
    ::LocalFree(sid);
  }

  HANDLE pipe_ = INVALID_HANDLE_VALUE;
  PSECURITY_DESCRIPTOR descriptor_ = nullptr;
  std::vector<Entry> entries_;
};

TEST_F(WindowsPipe, LetsInSystemAdministratorsAndTheConsoleUserAndNobodyElse) {
  ASSERT_EQ(entries_.size(), 3U);
  for (const Entry& entry : entries_) {
    EXPECT_EQ(entry.type, ACCESS_ALLOWED_ACE_TYPE);
    EXPECT_EQ(entry.flags, 0);
  }
  EXPECT_EQ(entries_[0].sid, L"S-1-5-18");
  EXPECT_EQ(entries_[1].sid, L"S-1-5-32-544");
  EXPECT_EQ(entries_[2].sid, platform::ipc::ConsoleUserSid());
}

TEST_F(WindowsPipe, GivesSystemAndAdministratorsEverything) {
  ASSERT_EQ(entries_.size(), 3U);
  for (const Entry& entry : {entries_[0], entries_[1]}) {
    // A generic right is mapped to the pipe's own ones when the pipe is made, or not until somebody opens it.
    EXPECT_TRUE(entry.mask == GENERIC_ALL || entry.mask == FILE_ALL_ACCESS) << std::hex << entry.mask;
  }
}

TEST_F(WindowsPipe, GivesTheConsoleUserReadingAndWritingButNoServerEnds) {
  ASSERT_EQ(entries_.size(), 3U);
  EXPECT_EQ(entries_[2].mask, 0x12019BU);
  EXPECT_EQ(entries_[2].mask & FILE_CREATE_PIPE_INSTANCE, 0U);
  EXPECT_EQ(entries_[2].mask & (FILE_GENERIC_READ | FILE_WRITE_DATA), FILE_GENERIC_READ | FILE_WRITE_DATA);
}

TEST_F(WindowsPipe, TakesNoRightsFromElsewhere) {
  SECURITY_DESCRIPTOR_CONTROL control = 0;
  DWORD revision = 0;
  ASSERT_TRUE(::GetSecurityDescriptorControl(descriptor_, &control, &revision));
  EXPECT_NE(control & SE_DACL_PROTECTED, 0);
}

TEST_F(WindowsPipe, NamesTheConsoleUserBySid) {
  const std::wstring sid = platform::ipc::ConsoleUserSid();
  EXPECT_EQ(sid.substr(0, 4), L"S-1-");
}

TEST_F(WindowsPipe, NameTellsNoCaseApart) {
  std::wstring upper = pipeName_;
  for (wchar_t& letter : upper) {
    letter = static_cast<wchar_t>(::towupper(letter));
  }
  IPCMessageHub second(upper);
  EXPECT_FALSE(second.Claim());
}

}  // namespace
