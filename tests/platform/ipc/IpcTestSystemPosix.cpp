#include <stdlib.h>

#include <filesystem>

#include "IpcTestSystem.h"

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
