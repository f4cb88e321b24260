// A folder for one run.
#pragma once

#include <string>

namespace bench {

// Made below TMPDIR (by default /tmp) and removed with everything in it.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

// Puts this process and those that it starts on a machine of their own: MARNOCK_ROOT and the console user. Returns the
// folder of the database files, which it makes.
std::string UseMachineIn(const TemporaryFolder& folder);

}  // namespace bench
