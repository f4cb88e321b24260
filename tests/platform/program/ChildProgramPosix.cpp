#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <stdexcept>

#include "tests/platform/ScratchMachine.h"
#include "tests/platform/program/ChildProgram.h"

namespace testing_support {

namespace {

std::vector<char*> Pointers(std::vector<std::string>& strings) {
  std::vector<char*> pointers;
  for (std::string& each : strings) {
    pointers.push_back(each.data());
  }
  pointers.push_back(nullptr);
  return pointers;
}

}  // namespace

ChildOutcome RunChild(const std::vector<std::string>& arguments, const std::string& input) {
  const ScratchMachine files;
  files.WriteFile(L"in", input);

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 0, files.RealPath(L"in").c_str(), O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, 1, files.RealPath(L"out").c_str(), O_WRONLY | O_CREAT, 0600);
  posix_spawn_file_actions_addopen(&actions, 2, files.RealPath(L"err").c_str(), O_WRONLY | O_CREAT, 0600);
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);

  std::vector<std::string> command = {std::filesystem::read_symlink("/proc/self/exe").parent_path() / "platform_child"};
  command.insert(command.end(), arguments.begin(), arguments.end());
  pid_t child = 0;
  const int error = posix_spawn(&child, command[0].c_str(), &actions, &attributes, Pointers(command).data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  posix_spawnattr_destroy(&attributes);
  if (error != 0) {
    throw std::runtime_error("cannot start " + command[0]);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, files.ReadFile(L"out"), files.ReadFile(L"err")};
}

}  // namespace testing_support
