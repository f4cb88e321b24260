// The life of a thread that runs handlers.
#pragma once

#include <asio/executor_work_guard.hpp>
#include <asio/io_context.hpp>
#include <exception>
#include <thread>
#include <utility>

#include "platform/ipc/Limits.h"
#include "platform/logging/LogLine.h"

namespace platform::ipc {

// Runs the handlers of `context` until it is stopped. An exception that escapes from one, such as memory that ran out,
// is logged as `text` and what it says, and ends nothing: after a pause `resume` is called, which has to bring about
// again whatever the handler did not. One that it throws itself is treated alike.
template <class Resume>
void RunUntilStopped(asio::io_context& context, const char* function, const char* text, Resume resume) {
  const auto work = asio::make_work_guard(context);
  bool isSound = true;
  while (!context.stopped()) {
    try {
      if (!std::exchange(isSound, true)) {
        resume();
      }
      context.run();
    } catch (const std::exception& error) {
      LogFailure(function, text, error.what());
      isSound = false;
      std::this_thread::sleep_for(kPauseAfterFailure);
    }
  }
}

}  // namespace platform::ipc
