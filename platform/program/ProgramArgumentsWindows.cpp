#include <windows.h>
// After windows.h, whose types it uses.
#include <shellapi.h>

#include <memory>
#include <system_error>

#include "platform/program/ProgramArguments.h"
#include "platform/text/WideText.h"

namespace platform {

std::vector<std::string> ProgramArguments(int, const char* const*) {
  int count = 0;
  const std::unique_ptr<LPWSTR, decltype(&LocalFree)> wide(CommandLineToArgvW(GetCommandLineW(), &count), &LocalFree);
  if (wide == nullptr) {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), "CommandLineToArgvW");
  }
  std::vector<std::string> arguments;
  arguments.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    arguments.push_back(ToUtf8(wide.get()[i]));
  }
  return arguments;
}

}  // namespace platform
