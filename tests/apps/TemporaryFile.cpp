#include "tests/apps/TemporaryFile.h"

#include <filesystem>
#include <random>

#include "tests/support/ConsoleProfile.h"

namespace support {

namespace {

std::filesystem::path FromUtf8(const std::string& utf8) { return std::u8string(utf8.begin(), utf8.end()); }

}  // namespace

TemporaryFile::TemporaryFile(const std::string& content) {
  const auto name = u8"marn\u00f6ck-" + std::filesystem::path(std::to_string(std::random_device{}())).u8string();
  const std::u8string path = (std::filesystem::temp_directory_path() / name).u8string();
  path_.assign(path.begin(), path.end());
  WriteBytes(FromUtf8(path_), content);
}

TemporaryFile::~TemporaryFile() {
  std::error_code ignored;
  std::filesystem::remove(FromUtf8(path_), ignored);
}

}  // namespace support
