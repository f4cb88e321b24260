#include <windows.h>

#include <optional>

#include "platform/program/ParentProcess.h"
#include "platform/program/RunProgram.h"
#include "platform/program/WindowsService.h"
#include "platform/program/WindowsStopSignal.h"

namespace platform {

namespace {

// Never destroyed: the system may call the handler until the process is gone.
WindowsStopSignal& ConsoleStop() {
  static auto* const stop = new WindowsStopSignal([] {});
  return *stop;
}

BOOL WINAPI OnConsoleEvent(DWORD event) {
  ConsoleStop().Request();
  if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) {
    // The system ends the process as soon as this handler returns. The end of the process ends this thread.
    Sleep(INFINITE);
  }
  return TRUE;
}

}  // namespace

int RunProgram(const std::function<int(StopSignal&)>& body) {
  if (StartedByServiceManager()) {
    if (const std::optional<int> result = RunAsService(body); result.has_value()) {
      return *result;
    }
  }
  StopSignal& stop = ConsoleStop();
  SetConsoleCtrlHandler(nullptr, FALSE);  // a parent may have made its children deaf to Ctrl-C
  SetConsoleCtrlHandler(&OnConsoleEvent, TRUE);
  return body(stop);
}

}  // namespace platform
