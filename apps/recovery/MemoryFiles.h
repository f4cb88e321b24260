// A file system in memory for SQLite: copies of database files can be opened, and even rolled back, without a trace on
// the disk.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>

struct sqlite3_vfs;

namespace KT {

// A file that would grow beyond this fails as on a full disk. What a rollback journal asks for may be any size.
inline constexpr std::size_t kMaxMemoryFileBytes = 512 * 1024 * 1024;

// Registered with SQLite, not as the default, for as long as it lives; every database opened on it must be closed
// before. No locks and no shared memory: one connection at a time, one thread.
class MemoryFiles {
 public:
  MemoryFiles();
  ~MemoryFiles();

  MemoryFiles(const MemoryFiles&) = delete;
  MemoryFiles& operator=(const MemoryFiles&) = delete;

  // The content by name. May be changed while no database is open.
  std::map<std::string, std::string> files;

  // The name under which SQLite knows this file system.
  const std::string& VfsName() const { return name_; }

 private:
  const std::string name_;
  const std::unique_ptr<sqlite3_vfs> vfs_;
};

}  // namespace KT
