// An empty folder of its own for a test, under a Windows path on every system.
#pragma once

#include <filesystem>
#include <string>

namespace testing_support {

// POSIX: moves the machine root ($MARNOCK_ROOT) into a fresh temporary folder; one at a time therefore. Windows: a
// fresh folder among the temporary files. All of it is deleted at the end.
class ScratchMachine {
 public:
  ScratchMachine();
  ~ScratchMachine();

  ScratchMachine(const ScratchMachine&) = delete;
  ScratchMachine& operator=(const ScratchMachine&) = delete;

  // The Windows path of `name` in the folder; an empty name gives the folder with its last backslash.
  std::wstring Path(const std::wstring& name = L"") const { return windowsFolder_ + name; }

  // Where the running system keeps that path.
  std::filesystem::path RealPath(const std::wstring& name = L"") const;

  // Makes a file with that content, or reads one.
  void WriteFile(const std::wstring& name, const std::string& content) const;
  std::string ReadFile(const std::wstring& name) const;

 private:
  std::wstring windowsFolder_;
  std::filesystem::path realFolder_;
};

}  // namespace testing_support
