#include "apps/recovery/Finding.h"

#include <functional>
#include <optional>

#include "apps/recovery/DatabaseLock.h"
#include "apps/recovery/StoreError.h"
#include "apps/recovery/UnwrittenPage.h"
#include "platform/OperatingSystem.h"
#include "platform/text/PlenixBase.h"

namespace KT {

namespace {

using platform::OperatingSystem;

FoundDatabase Found(const StoreFile& file, const std::optional<std::string>& bytes,
                    const std::optional<std::string>& journal) {
  FoundDatabase found;
  if (bytes.has_value()) {
    found.isThere = true;
    found.bytes = bytes->size();
    found.fingerprint = std::hash<std::string>()(*bytes);
    found.judgement = Judge(file, *bytes, journal);
  }
  return found;
}

// Beside a fresh journal nothing tells whether the file was synced before the power failed.
void JudgeAsUnsynced(FoundDatabase& found, const std::string& bytes) {
  if (!found.IsWhole()) {
    return;
  }
  if (const auto page = FirstUnwrittenPage(bytes); page.has_value()) {
    found.judgement.integrity = "page " + std::to_string(*page) + " was never written";
  }
}

void InsistOnNoLock(const std::wstring& path, const Sleep& sleep) {
  const std::string name = PlenixBase::UnicodeToUTF8(path);
  const std::string sqliteName = OperatingSystem::Get().SqliteFileName(name);
  LockProbe probe = LockProbe::Free;
  const bool isFree = TryPatiently(sleep, [&] {
    probe = ProbeDatabaseLock(sqliteName);
    return probe == LockProbe::Free;
  });
  if (!isFree) {
    throw StoreError(name + (probe == LockProbe::Locked ? " is locked by another program" : " cannot be opened") +
                     ". End the program that works on it and try again.");
  }
}

}  // namespace

std::wstring JournalPath(const std::wstring& path) { return path + L"-journal"; }

std::wstring TemporaryPath(const std::wstring& path) { return path + L".tmp"; }

std::optional<std::string> ReadPatiently(const std::wstring& path, const Sleep& sleep) {
  std::string bytes;
  bool isThere = true;
  platform::Dword error = 0;
  const bool decided = TryPatiently(sleep, [&] {
    isThere = OperatingSystem::Get().ReadSharedFile(path, kMaxDatabaseBytes, &bytes);
    if (isThere) {
      return true;
    }
    error = OperatingSystem::Get().GetLastError();
    return error == platform::kErrorFileNotFound || error == platform::kErrorPathNotFound;
  });
  if (!decided) {
    throw StoreError(PlenixBase::UnicodeToUTF8(path) + " cannot be read: " + MeaningOf(error) +
                     ". End the program that holds it, or give this one the right to read it, and try again.");
  }
  return isThere ? std::optional(std::move(bytes)) : std::nullopt;
}

Finding Inspect(const StoreFile& file, const std::wstring& folder, const Sleep& sleep) {
  Finding finding;
  finding.file = &file;
  finding.path = folder + PlenixBase::UTF8ToUnicode(file.fileName);
  const auto database = ReadPatiently(finding.path, sleep);
  auto journal = ReadPatiently(JournalPath(finding.path), sleep);
  if (journal.has_value()) {
    finding.journal = KindOfJournal(*journal);
  }
  if (finding.journal == JournalKind::Fresh) {
    journal.reset();  // it must not be applied, not even to the copy
  }
  finding.database = Found(file, database, journal);
  if (finding.journal == JournalKind::Fresh && database.has_value()) {
    JudgeAsUnsynced(finding.database, *database);
  }
  finding.temporary = Found(file, ReadPatiently(TemporaryPath(finding.path), sleep), std::nullopt);
  return finding;
}

void InsistOnNoLock(const Finding& finding, const Sleep& sleep) {
  if (finding.database.isThere) {
    InsistOnNoLock(finding.path, sleep);
  }
  if (finding.temporary.isThere) {
    InsistOnNoLock(TemporaryPath(finding.path), sleep);
  }
}

}  // namespace KT
