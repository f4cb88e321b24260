#include "apps/recovery/MemoryFiles.h"

#include <sqlite3.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <new>

namespace KT {

namespace {

using Files = std::map<std::string, std::string>;

// What SQLite holds for an open file. The strings of a map stay where they are.
struct OpenFile {
  sqlite3_file base;
  std::string* content;
};

std::string& ContentOf(sqlite3_file* file) { return *reinterpret_cast<OpenFile*>(file)->content; }

int Close(sqlite3_file*) { return SQLITE_OK; }

int Read(sqlite3_file* file, void* data, int size, sqlite3_int64 offset) {
  const std::string& content = ContentOf(file);
  const auto wanted = static_cast<std::size_t>(size);
  const std::size_t start = std::min(static_cast<std::size_t>(offset), content.size());
  const std::size_t there = std::min(wanted, content.size() - start);
  std::memcpy(data, content.data() + start, there);
  std::memset(static_cast<char*>(data) + there, 0, wanted - there);
  return there == wanted ? SQLITE_OK : SQLITE_IOERR_SHORT_READ;
}

int Write(sqlite3_file* file, const void* data, int size, sqlite3_int64 offset) {
  std::string& content = ContentOf(file);
  const auto start = static_cast<std::size_t>(offset);
  const auto length = static_cast<std::size_t>(size);
  if (start + length > kMaxMemoryFileBytes) {
    return SQLITE_FULL;
  }
  try {
    content.resize(std::max(content.size(), start + length));
  } catch (const std::bad_alloc&) {  // must not pass through SQLite
    return SQLITE_IOERR_NOMEM;
  }
  std::memcpy(content.data() + start, data, length);
  return SQLITE_OK;
}

int Truncate(sqlite3_file* file, sqlite3_int64 size) {
  ContentOf(file).resize(static_cast<std::size_t>(size));
  return SQLITE_OK;
}

int Sync(sqlite3_file*, int) { return SQLITE_OK; }

int FileSize(sqlite3_file* file, sqlite3_int64* size) {
  *size = static_cast<sqlite3_int64>(ContentOf(file).size());
  return SQLITE_OK;
}

int Lock(sqlite3_file*, int) { return SQLITE_OK; }

int CheckReservedLock(sqlite3_file*, int* result) {
  *result = 0;
  return SQLITE_OK;
}

int FileControl(sqlite3_file*, int, void*) { return SQLITE_NOTFOUND; }
int SectorSize(sqlite3_file*) { return 512; }
int DeviceCharacteristics(sqlite3_file*) { return 0; }

constexpr sqlite3_io_methods kMethods{
    .iVersion = 1,
    .xClose = Close,
    .xRead = Read,
    .xWrite = Write,
    .xTruncate = Truncate,
    .xSync = Sync,
    .xFileSize = FileSize,
    .xLock = Lock,
    .xUnlock = Lock,
    .xCheckReservedLock = CheckReservedLock,
    .xFileControl = FileControl,
    .xSectorSize = SectorSize,
    .xDeviceCharacteristics = DeviceCharacteristics,
    .xShmMap = nullptr,
    .xShmLock = nullptr,
    .xShmBarrier = nullptr,
    .xShmUnmap = nullptr,
    .xFetch = nullptr,
    .xUnfetch = nullptr,
};

Files& FilesOf(sqlite3_vfs* vfs) { return *static_cast<Files*>(vfs->pAppData); }

// SQLite gives no name to a file of its own that nobody else is to find.
std::string NameOf(const Files& files, const char* name) {
  return name != nullptr ? name : "unnamed-" + std::to_string(files.size());
}

int Open(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags, int* outFlags) {
  Files& files = FilesOf(vfs);
  const std::string key = NameOf(files, name);
  file->pMethods = nullptr;  // SQLite closes nothing then
  if (!files.contains(key) && (flags & SQLITE_OPEN_CREATE) == 0) {
    return SQLITE_CANTOPEN;
  }
  reinterpret_cast<OpenFile*>(file)->content = &files[key];
  file->pMethods = &kMethods;
  if (outFlags != nullptr) {
    *outFlags = flags;
  }
  return SQLITE_OK;
}

int Delete(sqlite3_vfs* vfs, const char* name, int) {
  return FilesOf(vfs).erase(name) == 1 ? SQLITE_OK : SQLITE_IOERR_DELETE_NOENT;
}

int Access(sqlite3_vfs* vfs, const char* name, int, int* result) {
  *result = FilesOf(vfs).contains(name) ? 1 : 0;
  return SQLITE_OK;
}

int FullPathname(sqlite3_vfs*, const char* name, int size, char* full) {
  sqlite3_snprintf(size, full, "%s", name);
  return SQLITE_OK;
}

std::string UniqueName() {
  static std::atomic<unsigned> count{0};
  return "marnock-memory-" + std::to_string(++count);
}

}  // namespace

MemoryFiles::MemoryFiles() : name_(UniqueName()), vfs_(std::make_unique<sqlite3_vfs>(*sqlite3_vfs_find(nullptr))) {
  // Calls that are not about files (time, sleep, randomness) stay the default one's.
  vfs_->szOsFile = sizeof(OpenFile);
  vfs_->zName = name_.c_str();
  vfs_->pNext = nullptr;
  vfs_->pAppData = &files;
  vfs_->xOpen = Open;
  vfs_->xDelete = Delete;
  vfs_->xAccess = Access;
  vfs_->xFullPathname = FullPathname;
  sqlite3_vfs_register(vfs_.get(), 0);
}

MemoryFiles::~MemoryFiles() { sqlite3_vfs_unregister(vfs_.get()); }

}  // namespace KT
