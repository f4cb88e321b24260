#include <unistd.h>

#include <csignal>

#include "platform/program/RunProgram.h"

namespace platform {

namespace {

bool IsIgnored(int signal) {
  struct sigaction action {};
  return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

sigset_t StopSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  if (!IsIgnored(SIGHUP)) {
    sigaddset(&signals, SIGHUP);
  }
  return signals;
}

// The signals are blocked in every thread and so stay pending until Wait takes one: no handler, nothing that has to be
// safe inside one.
class PosixStopSignal final : public StopSignal {
 public:
  explicit PosixStopSignal(const sigset_t& signals) : signals_(signals) {}

  void Wait() override {
    int signal = 0;
    while (!stopped_) {
      stopped_ = sigwait(&signals_, &signal) == 0;
    }
  }

  void Request() override { kill(getpid(), SIGTERM); }

 private:
  sigset_t signals_;
  bool stopped_ = false;
};

}  // namespace

int RunProgram(const std::function<int(StopSignal&)>& body) {
  const sigset_t signals = StopSignals();
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
  std::signal(SIGPIPE, SIG_IGN);
  PosixStopSignal stop(signals);
  return body(stop);
}

}  // namespace platform
