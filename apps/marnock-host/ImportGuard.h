// The empty file that keeps the start-up import from running again: the library looks for it and never writes it.
#pragma once

#include <string>

namespace KT {

class ImportGuard {
 public:
  // Looks where the console user's databases lie.
  ImportGuard();

  // Whether the file was there when this object was made; the import then does nothing.
  bool Exists() const { return exists_; }

  // Creates the file. Throws std::runtime_error that names it.
  void Create() const;

 private:
  std::wstring path_;  // empty when the console user is not known
  bool exists_ = false;
};

}  // namespace KT
