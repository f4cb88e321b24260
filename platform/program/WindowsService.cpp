#include "platform/program/WindowsService.h"

#include <windows.h>

#include <mutex>

#include "platform/program/WindowsStopSignal.h"

namespace platform {

namespace {

constexpr DWORD kPatienceMilliseconds = 30'000;  // how long the service manager lets starting and stopping take

// The service of this process. The service manager's calls carry no context to the service's main function.
struct Service {
  const std::function<int(StopSignal&)>* body = nullptr;
  std::optional<int> result;
  WindowsStopSignal* stop = nullptr;
  std::mutex reporting;  // guards what follows, and keeps reports in order: none may come after the last
  SERVICE_STATUS_HANDLE handle = nullptr;
  bool stopped = false;
};

Service g_service;

SERVICE_STATUS StatusFor(DWORD state, int result) {
  SERVICE_STATUS status{};
  status.dwServiceType = SERVICE_WIN32_OWN_PROCESS;
  status.dwCurrentState = state;
  status.dwControlsAccepted = state == SERVICE_RUNNING ? SERVICE_ACCEPT_STOP | SERVICE_ACCEPT_SHUTDOWN : 0;
  status.dwWin32ExitCode = result == 0 ? NO_ERROR : static_cast<DWORD>(ERROR_SERVICE_SPECIFIC_ERROR);
  status.dwServiceSpecificExitCode = static_cast<DWORD>(result);
  status.dwWaitHint = state == SERVICE_START_PENDING || state == SERVICE_STOP_PENDING ? kPatienceMilliseconds : 0;
  return status;
}

void Report(DWORD state, int result = 0) {
  const std::lock_guard lock(g_service.reporting);
  if (g_service.stopped) {
    return;
  }
  g_service.stopped = state == SERVICE_STOPPED;
  SERVICE_STATUS status = StatusFor(state, result);
  SetServiceStatus(g_service.handle, &status);
}

DWORD WINAPI OnControl(DWORD control, DWORD, void*, void*) {
  switch (control) {
    case SERVICE_CONTROL_STOP:
    case SERVICE_CONTROL_SHUTDOWN:
      Report(SERVICE_STOP_PENDING);
      g_service.stop->Request();
      return NO_ERROR;
    case SERVICE_CONTROL_INTERROGATE:
      return NO_ERROR;
    default:
      return ERROR_CALL_NOT_IMPLEMENTED;
  }
}

void WINAPI ServiceMain(DWORD, LPWSTR*) {
  g_service.handle = RegisterServiceCtrlHandlerExW(L"", &OnControl, nullptr);
  if (g_service.handle == nullptr) {
    return;
  }
  Report(SERVICE_START_PENDING);
  g_service.result = (*g_service.body)(*g_service.stop);
  Report(SERVICE_STOPPED, *g_service.result);
}

}  // namespace

std::optional<int> RunAsService(const std::function<int(StopSignal&)>& body) {
  WindowsStopSignal stop([] { Report(SERVICE_RUNNING); });
  g_service.body = &body;
  g_service.stop = &stop;
  wchar_t anyName[] = L"";  // the only service of its process is not looked up by name
  SERVICE_TABLE_ENTRYW services[] = {{anyName, &ServiceMain}, {nullptr, nullptr}};
  if (StartServiceCtrlDispatcherW(services) == FALSE) {
    return std::nullopt;
  }
  return g_service.result.value_or(1);
}

}  // namespace platform
