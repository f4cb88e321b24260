#include "platform/program/WindowsService.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <type_traits>

namespace platform {
namespace {

struct CloseService {
  void operator()(SC_HANDLE handle) const { CloseServiceHandle(handle); }
};
using ServiceHandle = std::unique_ptr<std::remove_pointer_t<SC_HANDLE>, CloseService>;

std::wstring ChildCommand(const std::wstring& task) {
  std::wstring name(32768, L'\0');
  name.resize(GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size())));
  return L"\"" + (std::filesystem::path(name).parent_path() / "platform_child.exe").wstring() + L"\" " + task;
}

// Registers the child program as a service with the service manager, which takes an administrator.
class WindowsServiceLife : public testing::Test {
 protected:
  void SetUp() override {
    manager_.reset(OpenSCManagerW(nullptr, nullptr, SC_MANAGER_ALL_ACCESS));
    if (manager_ == nullptr && GetLastError() == ERROR_ACCESS_DENIED) {
      GTEST_SKIP() << "only an administrator may register a service";
    }
    ASSERT_NE(manager_, nullptr);
  }

  ~WindowsServiceLife() override {
    if (service_ != nullptr) {
      DeleteService(service_.get());
    }
  }

  void StartChild(const std::wstring& task) {
    const std::wstring name = L"MarnockTest-" + std::to_wstring(GetCurrentProcessId()) + L"-" + task;
    service_.reset(CreateServiceW(manager_.get(), name.c_str(), nullptr, SERVICE_ALL_ACCESS, SERVICE_WIN32_OWN_PROCESS,
                                  SERVICE_DEMAND_START, SERVICE_ERROR_IGNORE, ChildCommand(task).c_str(), nullptr,
                                  nullptr, nullptr, nullptr, nullptr));
    ASSERT_NE(service_, nullptr) << GetLastError();
    ASSERT_NE(StartServiceW(service_.get(), 0, nullptr), FALSE) << GetLastError();
  }

  // The service's status once it is in `state`, or after 10 s.
  SERVICE_STATUS WaitFor(DWORD state) const {
    SERVICE_STATUS status{};
    for (int tries = 0; tries < 1000; ++tries) {
      if (QueryServiceStatus(service_.get(), &status) != FALSE && status.dwCurrentState == state) {
        break;
      }
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return status;
  }

 private:
  ServiceHandle manager_;

 protected:
  ServiceHandle service_;
};

TEST_F(WindowsServiceLife, RunsFromTheWaitToTheStopControl) {
  StartChild(L"wait");
  const SERVICE_STATUS running = WaitFor(SERVICE_RUNNING);
  ASSERT_EQ(running.dwCurrentState, DWORD{SERVICE_RUNNING});
  EXPECT_EQ(running.dwControlsAccepted, DWORD{SERVICE_ACCEPT_STOP | SERVICE_ACCEPT_SHUTDOWN});
  SERVICE_STATUS status{};
  EXPECT_NE(ControlService(service_.get(), SERVICE_CONTROL_STOP, &status), FALSE) << GetLastError();
  const SERVICE_STATUS stopped = WaitFor(SERVICE_STOPPED);
  EXPECT_EQ(stopped.dwCurrentState, DWORD{SERVICE_STOPPED});
  EXPECT_EQ(stopped.dwWin32ExitCode, DWORD{NO_ERROR});
}

TEST_F(WindowsServiceLife, EndsWithTheBodysStatusAsItsOwnError) {
  StartChild(L"fail");
  const SERVICE_STATUS stopped = WaitFor(SERVICE_STOPPED);
  EXPECT_EQ(stopped.dwCurrentState, DWORD{SERVICE_STOPPED});
  EXPECT_EQ(stopped.dwWin32ExitCode, DWORD{ERROR_SERVICE_SPECIFIC_ERROR});
  EXPECT_EQ(stopped.dwServiceSpecificExitCode, 3U);
}

}  // namespace
}  // namespace platform
