#include "apps/recovery/DatabaseLock.h"

#include <sqlite3.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace KT {

namespace {

// The name in the form that SQLite's file systems expect.
using FileName = std::unique_ptr<const char, decltype(&sqlite3_free_filename)>;

class VfsFile {
 public:
  VfsFile(sqlite3_vfs* vfs, const std::string& name)
      : name_(sqlite3_create_filename(name.c_str(), "", "", 0, nullptr), &sqlite3_free_filename),
        memory_(static_cast<std::size_t>(vfs->szOsFile) / sizeof(std::max_align_t) + 1),
        result_(vfs->xOpen(vfs, name_.get(), File(), SQLITE_OPEN_MAIN_DB | SQLITE_OPEN_READWRITE, &flags_)) {}
  VfsFile(const VfsFile&) = delete;
  VfsFile& operator=(const VfsFile&) = delete;
  ~VfsFile() {
    if (File()->pMethods != nullptr) {
      File()->pMethods->xClose(File());
    }
  }

  bool IsOpen() const { return result_ == SQLITE_OK; }
  bool Lock(int level) { return File()->pMethods->xLock(File(), level) == SQLITE_OK; }
  void Unlock() { File()->pMethods->xUnlock(File(), SQLITE_LOCK_NONE); }

  // A file that may only be read is opened so, and then nobody else's lock but a shared one can be asked for.
  int StrongestLock() const {
    return (flags_ & SQLITE_OPEN_READWRITE) != 0 ? SQLITE_LOCK_EXCLUSIVE : SQLITE_LOCK_SHARED;
  }

 private:
  sqlite3_file* File() { return reinterpret_cast<sqlite3_file*>(memory_.data()); }

  FileName name_;
  std::vector<std::max_align_t> memory_;
  int flags_ = 0;
  int result_;
};

}  // namespace

LockProbe ProbeDatabaseLock(const std::string& sqliteFileName) {
  sqlite3_initialize();
  VfsFile file(sqlite3_vfs_find(nullptr), sqliteFileName);
  if (!file.IsOpen()) {
    return LockProbe::Unopenable;
  }
  const bool free =
      file.Lock(SQLITE_LOCK_SHARED) && (file.StrongestLock() == SQLITE_LOCK_SHARED || file.Lock(SQLITE_LOCK_EXCLUSIVE));
  file.Unlock();
  return free ? LockProbe::Free : LockProbe::Locked;
}

}  // namespace KT
