// The life of a program that runs until it is asked to stop.
#pragma once

#include <functional>

namespace platform {

// Asked for: SIGINT, SIGTERM and (unless it was ignored from the start, as under nohup) SIGHUP on POSIX; Ctrl-C,
// Ctrl-Break, console close, log-off, shutdown and service stop on Windows; Request everywhere.
class StopSignal {
 public:
  virtual ~StopSignal() = default;

  // Sleeps until a stop is asked for; returns at once when that has happened. To call it means that starting is over:
  // a Windows service reports that it runs. On one thread only.
  virtual void Wait() = 0;

  // Asks for a stop. Any thread.
  virtual void Request() = 0;
};

// Runs `body`, which must not throw, and returns what it returned; `return RunProgram(...)` is the last thing main
// does. Call it once in a process and before any thread is started: from then on no request to stop ends the process by
// itself. That includes the time after main, in which static objects save what they hold, so a second Ctrl-C cuts
// nothing short. POSIX: SIGPIPE is ignored as well, a reader of the log that went away must not end the program.
//
// Windows: a program that the service manager started runs as a service, `body` then on a thread of the service
// manager's; any other runs as a console program. When a console closes, the system allows about 5 s for `body` and
// the static objects.
int RunProgram(const std::function<int(StopSignal&)>& body);

}  // namespace platform
