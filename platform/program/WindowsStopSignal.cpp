#include "platform/program/WindowsStopSignal.h"

#include <windows.h>

#include <system_error>
#include <utility>

namespace platform {

WindowsStopSignal::WindowsStopSignal(std::function<void()> onStarted)
    : onStarted_(std::move(onStarted)), event_(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
  if (event_ == nullptr) {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), "CreateEventW");
  }
}

WindowsStopSignal::~WindowsStopSignal() { CloseHandle(event_); }

void WindowsStopSignal::Wait() {
  onStarted_();
  WaitForSingleObject(event_, INFINITE);
}

void WindowsStopSignal::Request() { SetEvent(event_); }

}  // namespace platform
