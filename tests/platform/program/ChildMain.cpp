// The child of the tests in this folder: does what its first argument says.
#include <atomic>
#include <chrono>
#include <cstdio>
#include <functional>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "platform/logging/LogLine.h"
#include "platform/program/ProgramArguments.h"
#include "platform/program/RunProgram.h"
#include "platform/program/StandardStreams.h"
#include "platform/program/WholeInput.h"
#include "tests/platform/program/PrintHardening.h"
#include "tests/platform/program/SendSignal.h"

namespace {

using testing_support::SendHangUp;
using testing_support::SendInterrupt;
using testing_support::SendTerminate;

// Stands for the service object: it has something to do after main has returned.
struct SavesAtExit {
  bool armed = false;
  ~SavesAtExit() {
    if (armed) {
      SendInterrupt();  // must not cut short what follows
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
      std::puts("saved");
      std::fflush(stdout);
    }
  }
};

SavesAtExit g_savesAtExit;

// Waits for the stop that `ask` brings about on another thread; `status` is what main returns.
int RunUntil(const std::function<void(platform::StopSignal&)>& ask, int status) {
  g_savesAtExit.armed = true;
  return platform::RunProgram([&](platform::StopSignal& stop) {
    std::thread other(ask, std::ref(stop));
    stop.Wait();
    stop.Wait();  // returns at once
    other.join();
    std::puts("stopped");
    return status;
  });
}

int StopBeforeWait() {
  return platform::RunProgram([](platform::StopSignal& stop) {
    SendInterrupt();
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    std::puts("ready");
    stop.Wait();
    return 0;
  });
}

int HangUpThenRequest() {
  std::atomic<bool> requested{false};
  return platform::RunProgram([&](platform::StopSignal& stop) {
    SendHangUp();
    std::thread other([&] {
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
      requested = true;
      stop.Request();
    });
    stop.Wait();
    std::puts(requested ? "requested" : "hung up");
    other.join();
    return 0;
  });
}

int PrintArguments(const std::vector<std::string>& arguments) {
  for (std::size_t i = 2; i < arguments.size(); ++i) {
    std::cout << arguments[i] << '\n';
  }
  return 0;
}

int CopyInput(std::size_t limitBytes) try {
  std::cout << platform::ReadStandardInput(limitBytes);
  return 0;
} catch (const std::runtime_error& error) {
  std::cerr << error.what();
  return 1;
}

int Harden(const std::string& folder) {
  testing_support::PrintHardening(folder);
  return 0;
}

int WriteLog() {
  platform::LogProgress("f", "first\n\xC3\xA9");
  platform::LogFailure("f", "second");
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  platform::PrepareStandardStreams();
  const std::vector<std::string> arguments = platform::ProgramArguments(argc, argv);
  const std::map<std::string, std::function<int()>> tasks = {
      {"arguments", [&] { return PrintArguments(arguments); }},
      {"copy", [&] { return CopyInput(std::stoul(arguments.at(2))); }},
      {"log", [] { return WriteLog(); }},
      {"harden", [&] { return Harden(arguments.at(2)); }},
      {"interrupt", [] { return RunUntil([](platform::StopSignal&) { SendInterrupt(); }, 0); }},
      {"terminate", [] { return RunUntil([](platform::StopSignal&) { SendTerminate(); }, 0); }},
      {"hang-up", [] { return RunUntil([](platform::StopSignal&) { SendHangUp(); }, 0); }},
      {"request", [] { return RunUntil([](platform::StopSignal& stop) { stop.Request(); }, 3); }},
      {"wait", [] { return RunUntil([](platform::StopSignal&) {}, 0); }},
      {"fail", [] { return platform::RunProgram([](platform::StopSignal&) { return 3; }); }},
      {"stop-before-wait", [] { return StopBeforeWait(); }},
      {"hang-up-then-request", [] { return HangUpThenRequest(); }},
  };
  return tasks.at(arguments.at(1))();
}
