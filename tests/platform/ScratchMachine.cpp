#include "tests/platform/ScratchMachine.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "platform/text/WideText.h"

namespace testing_support {

std::filesystem::path ScratchMachine::RealPath(const std::wstring& name) const {
  std::string utf8 = platform::ToUtf8(name);
  std::replace(utf8.begin(), utf8.end(), '\\', '/');
  return realFolder_ / std::u8string(utf8.begin(), utf8.end());
}

void ScratchMachine::WriteFile(const std::wstring& name, const std::string& content) const {
  std::ofstream(RealPath(name), std::ios::binary) << content;
}

std::string ScratchMachine::ReadFile(const std::wstring& name) const {
  std::ifstream file(RealPath(name), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace testing_support
