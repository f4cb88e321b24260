// SQLite's way to a disk in memory.
#pragma once

#include <memory>

#include "tests/support/MemoryDisk.h"

struct sqlite3_vfs;

namespace support {

// SQLite's default file system for as long as it lives; every database opened meanwhile must be closed before it goes,
// memory databases too. Syncs what SQLite's own file systems sync: a new journal's first sync is one of the folder too,
// and so is a deletion that asks for it. Nobody holds locks. One thread.
class MemoryDiskVfs {
 public:
  // `disk` must outlive it.
  explicit MemoryDiskVfs(MemoryDisk& disk);
  ~MemoryDiskVfs();

  MemoryDiskVfs(const MemoryDiskVfs&) = delete;
  MemoryDiskVfs& operator=(const MemoryDiskVfs&) = delete;

 private:
  const std::unique_ptr<sqlite3_vfs> vfs_;
};

}  // namespace support
