#include "apps/marnock-host/ImportGuard.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "host/Utils.h"
#include "persistence/DatabaseFiles.h"
#include "platform/OperatingSystem.h"
#include "platform/text/PlenixBase.h"

namespace KT {

namespace {

std::filesystem::path FromUtf8(const std::string& utf8) {
  return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

}  // namespace

ImportGuard::ImportGuard() {
  const std::wstring folder = Utils::GetCurrUserDefinePath(kDatabaseFolder);
  if (!folder.empty()) {
    path_ = folder + PlenixBase::UTF8ToUnicode(kDatabaseFileName);
    exists_ = FileExists(path_);
  }
}

void ImportGuard::Create() const {
  const std::string fault = "the import's guard file cannot be created, so the next start would import again: ";
  if (path_.empty()) {
    throw std::runtime_error(fault + "the console user is not known");
  }
  const std::string name = PlenixBase::UnicodeToUTF8(path_);
  const std::string file = platform::OperatingSystem::Get().SqliteFileName(name);
  if (!std::ofstream(FromUtf8(file), std::ios::app)) {
    throw std::runtime_error(fault + name);
  }
}

}  // namespace KT
