// What lies on the disk under one database file's name and those that belong to it.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "apps/recovery/JournalHeader.h"
#include "apps/recovery/Judgement.h"
#include "apps/recovery/MemoryFiles.h"
#include "apps/recovery/Patience.h"
#include "apps/recovery/StoreFile.h"

namespace KT {

// More than any table of devices needs, and little enough to be held in memory several times.
inline constexpr std::size_t kMaxDatabaseBytes = kMaxMemoryFileBytes;

struct FoundDatabase {
  bool isThere = false;
  std::size_t bytes = 0;
  std::size_t fingerprint = 0;  // of the content: another one, another content
  Judgement judgement;          // only for a file that is there

  bool IsWhole() const { return isThere && judgement.IsWhole(); }
};

struct Finding {
  const StoreFile* file = nullptr;  // never null in what Inspect returns
  std::wstring path;                // Windows path of the database file, FILE below
  FoundDatabase
      database;  // FILE: as it stands beside a fresh journal or none, beside another as SQLite would roll it back
  JournalKind journal = JournalKind::None;  // FILE-journal
  FoundDatabase temporary;                  // FILE.tmp
};

std::wstring JournalPath(const std::wstring& path);
std::wstring TemporaryPath(const std::wstring& path);

// The content of a file, or nothing when there is no such file. Throws StoreError when one that is there cannot be
// read, after TryPatiently.
std::optional<std::string> ReadPatiently(const std::wstring& path, const Sleep& sleep);

// Reads and judges, and touches nothing: safe beside a running host, whose saves may however be seen half done.
// `folder`: Windows path of the database folder, with a backslash at the end. Throws StoreError when a file that is
// there cannot be read, after TryPatiently.
Finding Inspect(const StoreFile& file, const std::wstring& folder, const Sleep& sleep);

// Throws StoreError when another program works on FILE or FILE.tmp, after TryPatiently. Not beside a running host,
// whose own work it would hinder.
void InsistOnNoLock(const Finding& finding, const Sleep& sleep);

}  // namespace KT
