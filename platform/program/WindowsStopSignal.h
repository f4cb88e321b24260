// Windows only: a request to stop as an event that stays set.
#pragma once

#include <functional>

#include "platform/program/RunProgram.h"

namespace platform {

class WindowsStopSignal final : public StopSignal {
 public:
  // `onStarted` runs at the start of Wait. Throws std::system_error.
  explicit WindowsStopSignal(std::function<void()> onStarted);
  ~WindowsStopSignal() override;

  WindowsStopSignal(const WindowsStopSignal&) = delete;
  WindowsStopSignal& operator=(const WindowsStopSignal&) = delete;

  void Wait() override;
  void Request() override;

 private:
  std::function<void()> onStarted_;
  void* event_;
};

}  // namespace platform
