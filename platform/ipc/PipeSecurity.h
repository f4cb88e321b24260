// Windows: who may open the pipe.
#pragma once

#include <memory>
#include <string>

namespace platform::ipc {

// A protected security descriptor that lets in SYSTEM and Administrators (everything), the console user (reading and
// writing, but not the making of further server ends), and nobody else. Where the console user cannot be told, because
// nobody is signed in or this process lacks the privilege to ask, the process's own user is taken for it.
class PipeSecurity {
 public:
  // Throws std::system_error when it cannot be put together.
  PipeSecurity();

  // A SECURITY_DESCRIPTOR; lives as long as this object.
  void* Descriptor() const { return descriptor_.get(); }

 private:
  struct LocalFreeing {
    void operator()(void* memory) const;
  };
  std::unique_ptr<void, LocalFreeing> descriptor_;
};

// The SID of the user on the console (see above), as text, for example S-1-5-21-1-2-3-1001. Throws std::system_error.
std::wstring ConsoleUserSid();

}  // namespace platform::ipc
