#include <windows.h>

#include <filesystem>
#include <stdexcept>

#include "platform/text/WideText.h"
#include "tests/platform/ScratchMachine.h"
#include "tests/platform/program/ChildProgram.h"

namespace testing_support {

namespace {

// One argument as CommandLineToArgvW will read it back.
std::wstring Quoted(const std::wstring& argument) {
  std::wstring result = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t c : argument) {
    if (c == L'"') {
      result.append(backslashes + 1, L'\\');
    }
    backslashes = c == L'\\' ? backslashes + 1 : 0;
    result += c;
  }
  return result.append(backslashes, L'\\') + L"\"";
}

std::filesystem::path ChildPath() {
  std::wstring name(32768, L'\0');
  name.resize(GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size())));
  return std::filesystem::path(name).parent_path() / "platform_child.exe";
}

HANDLE OpenInheritable(const std::filesystem::path& path, DWORD access, DWORD disposition) {
  SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  return CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable, disposition, 0, nullptr);
}

}  // namespace

ChildOutcome RunChild(const std::vector<std::string>& arguments, const std::string& input) {
  const ScratchMachine files;
  files.WriteFile(L"in", input);
  STARTUPINFOW start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdInput = OpenInheritable(files.RealPath(L"in"), GENERIC_READ, OPEN_EXISTING);
  start.hStdOutput = OpenInheritable(files.RealPath(L"out"), GENERIC_WRITE, CREATE_NEW);
  start.hStdError = OpenInheritable(files.RealPath(L"err"), GENERIC_WRITE, CREATE_NEW);

  std::wstring command = Quoted(ChildPath().wstring());
  for (const std::string& each : arguments) {
    command += L' ' + Quoted(platform::ToWide(each));
  }
  PROCESS_INFORMATION child{};
  const BOOL started = CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW, nullptr,
                                      nullptr, &start, &child);
  for (HANDLE const handle : {start.hStdInput, start.hStdOutput, start.hStdError}) {
    CloseHandle(handle);
  }
  if (started == FALSE) {
    throw std::runtime_error("cannot start " + platform::ToUtf8(command));
  }
  WaitForSingleObject(child.hProcess, INFINITE);
  DWORD status = 0;
  GetExitCodeProcess(child.hProcess, &status);
  CloseHandle(child.hThread);
  CloseHandle(child.hProcess);
  return {static_cast<int>(status), files.ReadFile(L"out"), files.ReadFile(L"err")};
}

}  // namespace testing_support
