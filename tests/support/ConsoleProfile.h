// A console user of the test's own, and what lies in that user's profile.
#pragma once

#include <filesystem>
#include <string>

namespace support {

// Makes up an account that no other test uses. Its profile folder starts out absent and is removed at the end.
class ConsoleProfile {
 public:
  ConsoleProfile();
  ~ConsoleProfile();

  ConsoleProfile(const ConsoleProfile&) = delete;
  ConsoleProfile& operator=(const ConsoleProfile&) = delete;

  // PC01\account, with a letter that is not ASCII in it.
  std::wstring SamName() const { return L"PC01\\" + account_; }

  // C:\Users\account
  std::wstring Root() const { return L"C:\\Users\\" + account_; }

  // The Windows path of a file in the database folder, for example File("a.db").
  std::string File(const std::string& name) const;

  // Where the running system has it.
  std::filesystem::path NativeRoot() const;
  std::filesystem::path NativeFile(const std::string& name) const;

  void MakeDatabaseFolder() const;

 private:
  std::wstring account_;
};

// The bytes of a file; empty for one that is not there.
std::string ReadBytes(const std::filesystem::path& file);
void WriteBytes(const std::filesystem::path& file, const std::string& bytes);

}  // namespace support
