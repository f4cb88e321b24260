#include <spawn.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <stdexcept>

#include "platform/text/WideText.h"
#include "tests/platform/ipc/IpcTestSystem.h"

PrivatePipes::PrivatePipes() : root_("/tmp/marnock-XXXXXX") {  // short: a socket's path has 107 bytes
  if (::mkdtemp(root_.data()) == nullptr) {
    throw std::runtime_error("no folder for the test: " + root_);
  }
  ::setenv("MARNOCK_ROOT", root_.c_str(), 1);
}

PrivatePipes::~PrivatePipes() {
  ::unsetenv("MARNOCK_ROOT");
  std::filesystem::remove_all(root_);
}

std::wstring PrivatePipes::NewName() {
  static int count = 0;
  return L"\\\\.\\Pipe\\MarnockTest" + std::to_wstring(++count);
}

int StatusForForeignHello(const std::wstring& pipeName, int wantedId, int floodedId) {
  const std::string program = std::filesystem::read_symlink("/proc/self/exe").parent_path() / "ipc_foreign_peer";
  std::string name = platform::ToUtf8(pipeName);
  std::string id = std::to_string(wantedId);
  std::string flooded = std::to_string(floodedId);
  std::string title = program;
  char* const arguments[] = {title.data(), name.data(), id.data(), floodedId == 0 ? nullptr : flooded.data(), nullptr};
  pid_t process = 0;
  if (::posix_spawn(&process, program.c_str(), nullptr, nullptr, arguments, environ) != 0) {
    throw std::runtime_error("cannot start " + program);
  }
  int status = 0;
  ::waitpid(process, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
