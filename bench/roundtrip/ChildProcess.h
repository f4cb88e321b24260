// A program that runs beside the benchmark.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace bench {

class ChildProcess {
 public:
  // Starts `arguments[0]` with this process's environment and waits until its standard output has a line that holds
  // "ready". Throws std::system_error when it cannot be started and std::runtime_error when it ends before.
  explicit ChildProcess(const std::vector<std::string>& arguments);
  // Asks it to end (SIGTERM) and waits for it.
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  // Processor time that all its threads have used so far, user and system, in nanoseconds.
  double ProcessorTime() const;

 private:
  void WaitUntilReady(int output) const;

  pid_t process_ = -1;
};

// The same of the calling process.
double OwnProcessorTime();

// The path of `program` beside the running one.
std::string Sibling(const std::string& program);

}  // namespace bench
