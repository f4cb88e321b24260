#include "apps/marnockctl/StoreContent.h"

#include <algorithm>
#include <filesystem>
#include <vector>

#include "apps/marnockctl/StoreFolder.h"
#include "apps/marnockctl/StoreLook.h"
#include "apps/recovery/DatabaseImage.h"
#include "apps/recovery/Finding.h"
#include "apps/recovery/Salvage.h"
#include "apps/recovery/StoreError.h"
#include "platform/program/WholeInput.h"
#include "platform/text/PlenixBase.h"

namespace KT {

namespace {

std::string PathOf(const std::string& name) {
  for (const StoreFile& file : StoreFiles()) {
    if (name == file.name) {
      return PlenixBase::UnicodeToUTF8(StoreFolder()) + file.fileName;
    }
  }
  return name.find_first_of("\\/") == std::string::npos ? PlenixBase::UnicodeToUTF8(StoreFolder()) + name : name;
}

// The files that it can be, by its name; any for a name that says nothing.
std::vector<const StoreFile*> Candidates(const std::string& path) {
  const std::string name = path.substr(path.find_last_of("\\/") + 1);
  std::vector<const StoreFile*> all;
  for (const StoreFile& file : StoreFiles()) {
    if (name.starts_with(file.fileName)) {
      return {&file};
    }
    all.push_back(&file);
  }
  return all;
}

// A path with a drive is one of the machine that the service sees, any other one of the running system.
std::optional<std::string> ReadFile(const std::string& path) {
  if (path.find(':') == 1) {
    return ReadPatiently(PlenixBase::UTF8ToUnicode(path), &SleepFor);
  }
  std::error_code ignored;  // what cannot be looked up cannot be read, which then says why
  const std::filesystem::path native(std::u8string(path.begin(), path.end()));
  if (std::filesystem::status(native, ignored).type() == std::filesystem::file_type::not_found) {
    return std::nullopt;
  }
  return platform::ReadWholeFile(path, kMaxDatabaseBytes);
}

struct Bytes {
  std::string database;
  std::optional<std::string> journal;  // only one that SQLite would apply rightly
};

std::optional<Bytes> ReadBytes(const std::string& path) {
  auto database = ReadFile(path);
  if (!database.has_value()) {
    return std::nullopt;
  }
  auto journal = ReadFile(path + "-journal");
  if (journal.has_value() && KindOfJournal(*journal) == JournalKind::Fresh) {
    journal.reset();
  }
  return Bytes{*std::move(database), std::move(journal)};
}

const StoreFile* FirstThatIsWhole(const std::vector<const StoreFile*>& candidates, const Bytes& bytes) {
  const auto found = std::find_if(candidates.begin(), candidates.end(), [&bytes](const StoreFile* file) {
    return Judge(*file, bytes.database, bytes.journal).IsWhole();
  });
  return found == candidates.end() ? nullptr : *found;
}

StoreContent SalvageFrom(const std::vector<const StoreFile*>& candidates, const Bytes& bytes) {
  StoreContent content;
  SalvagedTable best;
  for (const StoreFile* const file : candidates) {
    SalvagedTable table = Salvage(*file, bytes.database);
    if (content.file == nullptr || table.rows > best.rows) {
      content.file = file;
      best = std::move(table);
    }
  }
  content.problem = Judge(*content.file, bytes.database, bytes.journal).Problem();
  content.rows = ReadRows(*content.file, *best.database);
  return content;
}

}  // namespace

std::optional<StoreContent> ReadStoreContent(const std::string& name) {
  const std::string path = PathOf(name);
  const auto candidates = Candidates(path);
  std::optional<Bytes> bytes;
  const StoreFile* whole = nullptr;
  WaitForQuiet(PlenixBase::UTF8ToUnicode(path), &SleepFor);
  TryPatiently(&SleepFor, [&] {
    bytes = ReadBytes(path);
    whole = bytes.has_value() ? FirstThatIsWhole(candidates, *bytes) : nullptr;
    return whole != nullptr;
  });
  if (!bytes.has_value()) {
    return std::nullopt;
  }
  StoreContent content;
  if (whole != nullptr) {
    DatabaseImage image(std::move(bytes->database), bytes->journal);
    content.file = whole;
    content.rows = ReadRows(*whole, image.Get());
  } else {
    content = SalvageFrom(candidates, *bytes);
  }
  content.path = path;
  return content;
}

}  // namespace KT
