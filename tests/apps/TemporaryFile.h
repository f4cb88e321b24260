// A file that is there for one test.
#pragma once

#include <string>

namespace support {

class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& content);
  ~TemporaryFile();

  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  // Its path in UTF-8, as the running system spells it.
  const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace support
