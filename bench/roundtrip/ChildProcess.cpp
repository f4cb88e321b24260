#include "bench/roundtrip/ChildProcess.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace bench {

namespace {

void Require(int error, const std::string& what) {
  if (error != 0) throw std::system_error(error, std::generic_category(), what);
}

double Read(clockid_t clock) {
  timespec time{};
  clock_gettime(clock, &time);
  return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

pid_t Spawn(std::vector<std::string> arguments, int output) {
  std::vector<char*> words;
  words.reserve(arguments.size() + 1);
  for (std::string& argument : arguments) words.push_back(argument.data());
  words.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  Require(posix_spawn_file_actions_init(&actions), "posix_spawn");
  posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
  pid_t process = -1;
  const int error = posix_spawn(&process, words[0], &actions, nullptr, words.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  Require(error, arguments[0]);
  return process;
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& arguments) {
  std::array<int, 2> ends{};
  Require(pipe2(ends.data(), O_CLOEXEC) == 0 ? 0 : errno, "pipe2");
  process_ = Spawn(arguments, ends[1]);
  close(ends[1]);
  WaitUntilReady(ends[0]);
  close(ends[0]);
}

void ChildProcess::WaitUntilReady(int output) const {
  std::string said;
  std::array<char, 256> buffer{};
  while (said.find("ready") == std::string::npos || said.find('\n') == std::string::npos) {
    const ssize_t count = read(output, buffer.data(), buffer.size());
    if (count <= 0) throw std::runtime_error("a program of the benchmark ended before it was ready");
    said.append(buffer.data(), static_cast<std::size_t>(count));
  }
}

ChildProcess::~ChildProcess() {
  kill(process_, SIGTERM);
  waitpid(process_, nullptr, 0);
}

double ChildProcess::ProcessorTime() const {
  clockid_t clock{};
  Require(clock_getcpuclockid(process_, &clock), "clock_getcpuclockid");
  return Read(clock);
}

double OwnProcessorTime() { return Read(CLOCK_PROCESS_CPUTIME_ID); }

std::string Sibling(const std::string& program) {
  return (std::filesystem::read_symlink("/proc/self/exe").parent_path() / program).string();
}

}  // namespace bench
