#include "tests/support/ConsoleProfile.h"

#include <fstream>
#include <iterator>
#include <random>

#include "platform/OperatingSystem.h"
#include "platform/text/PlenixBase.h"

namespace support {

namespace {

// The name for SQLite is the running system's own name, on every system.
std::filesystem::path NativePath(const std::string& windowsPath) {
  const std::string name = platform::RealOperatingSystem().SqliteFileName(windowsPath);
  return std::u8string(name.begin(), name.end());
}

}  // namespace

ConsoleProfile::ConsoleProfile() : account_(L"t\u00e4st-" + std::to_wstring(std::random_device{}())) {}

ConsoleProfile::~ConsoleProfile() {
  std::error_code ignored;
  std::filesystem::remove_all(NativeRoot(), ignored);
}

std::string ConsoleProfile::File(const std::string& name) const {
  return PlenixBase::UnicodeToUTF8(Root()) + "\\Orvnta\\DeviceMgr\\" + name;
}

std::filesystem::path ConsoleProfile::NativeRoot() const { return NativePath(PlenixBase::UnicodeToUTF8(Root())); }

std::filesystem::path ConsoleProfile::NativeFile(const std::string& name) const { return NativePath(File(name)); }

void ConsoleProfile::MakeDatabaseFolder() const { std::filesystem::create_directories(NativeFile("")); }

std::string ReadBytes(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

void WriteBytes(const std::filesystem::path& file, const std::string& bytes) {
  std::ofstream(file, std::ios::binary) << bytes;
}

}  // namespace support
