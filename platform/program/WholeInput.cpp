#include "platform/program/WholeInput.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>

namespace platform {

namespace {

[[noreturn]] void Fail(const std::string& name, const std::string& reason) {
  throw std::runtime_error("cannot read " + name + ": " + reason);
}

std::string ReadAll(std::istream& input, const std::string& name, std::size_t limitBytes) {
  std::string content;
  std::array<char, 16384> block{};
  while (input) {
    input.read(block.data(), block.size());
    content.append(block.data(), static_cast<std::size_t>(input.gcount()));
    if (content.size() > limitBytes) {
      Fail(name, "it holds more than " + std::to_string(limitBytes) + " bytes");
    }
  }
  if (input.bad()) {
    Fail(name, "input error");
  }
  return content;
}

// Throws std::range_error on Windows for what is not UTF-8.
std::filesystem::path PathOf(const std::string& utf8Path) { return std::u8string(utf8Path.begin(), utf8Path.end()); }

}  // namespace

std::string ReadWholeFile(const std::string& utf8Path, std::size_t limitBytes) {
  const std::filesystem::path path = PathOf(utf8Path);
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    Fail(utf8Path, errno == 0 ? "it cannot be opened" : std::strerror(errno));
  }
  return ReadAll(file, utf8Path, limitBytes);
}

std::string ReadStandardInput(std::size_t limitBytes) { return ReadAll(std::cin, "standard input", limitBytes); }

}  // namespace platform
