#include "tests/support/MemoryDiskVfs.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <string_view>

namespace support {

namespace {

// What SQLite holds for an open file.
struct OpenFile {
  sqlite3_file base;
  MemoryDisk* disk;
  std::shared_ptr<MemoryDisk::File> file;
  bool isNewName;  // the folder does not have the name for good yet, and a sync is to see to that
};

OpenFile& OpenOf(sqlite3_file* file) { return *reinterpret_cast<OpenFile*>(file); }

int Close(sqlite3_file* file) {
  OpenOf(file).file.~shared_ptr();
  return SQLITE_OK;
}

int Read(sqlite3_file* file, void* data, int size, sqlite3_int64 offset) {
  const std::string& bytes = OpenOf(file).file->bytes;
  const auto wanted = static_cast<std::size_t>(size);
  const std::size_t start = std::min(static_cast<std::size_t>(offset), bytes.size());
  const std::size_t copied = bytes.copy(static_cast<char*>(data), wanted, start);
  std::memset(static_cast<char*>(data) + copied, 0, wanted - copied);
  return copied == wanted ? SQLITE_OK : SQLITE_IOERR_SHORT_READ;
}

int Write(sqlite3_file* file, const void* data, int size, sqlite3_int64 offset) {
  OpenFile& open = OpenOf(file);
  const std::string_view bytes(static_cast<const char*>(data), static_cast<std::size_t>(size));
  return open.disk->Write(*open.file, static_cast<std::size_t>(offset), bytes) ? SQLITE_OK : SQLITE_FULL;
}

int Truncate(sqlite3_file* file, sqlite3_int64 size) {
  OpenFile& open = OpenOf(file);
  open.disk->Resize(*open.file, static_cast<std::size_t>(size));
  return SQLITE_OK;
}

int Sync(sqlite3_file* file, int) {
  OpenFile& open = OpenOf(file);
  open.disk->Sync(*open.file);
  if (open.isNewName) {
    open.disk->SyncFolder();
    open.isNewName = false;
  }
  return SQLITE_OK;
}

int FileSize(sqlite3_file* file, sqlite3_int64* size) {
  *size = static_cast<sqlite3_int64>(OpenOf(file).file->bytes.size());
  return SQLITE_OK;
}

int Lock(sqlite3_file*, int) { return SQLITE_OK; }

int CheckReservedLock(sqlite3_file*, int* result) {
  *result = 0;
  return SQLITE_OK;
}

// As SQLite's own file systems for POSIX and Windows have them.
int FileControl(sqlite3_file*, int, void*) { return SQLITE_NOTFOUND; }
int SectorSize(sqlite3_file*) { return 4096; }
int DeviceCharacteristics(sqlite3_file*) { return SQLITE_IOCAP_POWERSAFE_OVERWRITE; }

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

MemoryDisk& DiskOf(sqlite3_vfs* vfs) { return *static_cast<MemoryDisk*>(vfs->pAppData); }

// SQLite gives no name to a file of its own that nobody else is to find; such a one never comes on the disk.
std::shared_ptr<MemoryDisk::File> FindOrCreate(MemoryDisk& disk, const char* name, bool create) {
  if (name == nullptr) {
    return nullptr;
  }
  auto file = disk.Find(name);
  return file == nullptr && create ? disk.Create(name) : file;
}

int Open(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags, int* outFlags) {
  MemoryDisk& disk = DiskOf(vfs);
  file->pMethods = nullptr;  // SQLite closes nothing then
  const bool create = (flags & SQLITE_OPEN_CREATE) != 0;
  auto found = FindOrCreate(disk, name, create);
  if (found == nullptr) {
    return SQLITE_CANTOPEN;
  }
  const bool isNewJournal = create && (flags & SQLITE_OPEN_MAIN_JOURNAL) != 0;
  new (file) OpenFile{{&kMethods}, &disk, std::move(found), isNewJournal};
  if (outFlags != nullptr) {
    *outFlags = flags;
  }
  return SQLITE_OK;
}

int Delete(sqlite3_vfs* vfs, const char* name, int syncFolder) {
  if (!DiskOf(vfs).Delete(name)) {
    return SQLITE_IOERR_DELETE_NOENT;
  }
  if (syncFolder != 0) {
    DiskOf(vfs).SyncFolder();
  }
  return SQLITE_OK;
}

// SQLite takes an empty file for absent when it looks for one that exists.
int Access(sqlite3_vfs* vfs, const char* name, int flags, int* result) {
  const auto file = DiskOf(vfs).Find(name);
  *result = file != nullptr && (flags != SQLITE_ACCESS_EXISTS || !file->bytes.empty()) ? 1 : 0;
  return SQLITE_OK;
}

int FullPathname(sqlite3_vfs*, const char* name, int size, char* full) {
  sqlite3_snprintf(size, full, "%s", name);
  return SQLITE_OK;
}

}  // namespace

MemoryDiskVfs::MemoryDiskVfs(MemoryDisk& disk) : vfs_(std::make_unique<sqlite3_vfs>(*sqlite3_vfs_find(nullptr))) {
  // Calls that are not about files (time, sleep, randomness) stay the default one's.
  vfs_->szOsFile = sizeof(OpenFile);
  vfs_->zName = "memory-disk";
  vfs_->pNext = nullptr;
  vfs_->pAppData = &disk;
  vfs_->xOpen = Open;
  vfs_->xDelete = Delete;
  vfs_->xAccess = Access;
  vfs_->xFullPathname = FullPathname;
  sqlite3_vfs_register(vfs_.get(), 1);
}

MemoryDiskVfs::~MemoryDiskVfs() { sqlite3_vfs_unregister(vfs_.get()); }

}  // namespace support
