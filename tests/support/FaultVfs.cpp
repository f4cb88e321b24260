#include "tests/support/FaultVfs.h"

#include <sqlite3.h>

#include <climits>
#include <cstring>

namespace support {

namespace {

// What SQLite holds for an open file. The file of the file system below follows it in the same block of memory.
struct File {
  sqlite3_file base;
  FaultVfs* owner;
  const char* subject;

  sqlite3_file* Real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
  const sqlite3_io_methods& RealMethods() { return *Real()->pMethods; }
};
static_assert(sizeof(File) % 8 == 0, "SQLite aligns files to 8 bytes");

File& FileOf(sqlite3_file* file) { return *reinterpret_cast<File*>(file); }

// Runs the real method unless the call is made to fail.
template <class Method, class... Arguments>
int Forward(FileCall call, sqlite3_file* file, Method method, Arguments... arguments) {
  File& self = FileOf(file);
  const int fault = self.owner->Begin(call, self.subject);
  return fault != SQLITE_OK ? fault : (self.RealMethods().*method)(self.Real(), arguments...);
}

int Close(sqlite3_file* file) {
  File& self = FileOf(file);
  const int fault = self.owner->Begin(FileCall::Close, self.subject);
  const int result = self.RealMethods().xClose(self.Real());
  return fault != SQLITE_OK ? fault : result;
}

int Read(sqlite3_file* file, void* data, int size, sqlite3_int64 offset) {
  return Forward(FileCall::Read, file, &sqlite3_io_methods::xRead, data, size, offset);
}

int Write(sqlite3_file* file, const void* data, int size, sqlite3_int64 offset) {
  return Forward(FileCall::Write, file, &sqlite3_io_methods::xWrite, data, size, offset);
}

int Truncate(sqlite3_file* file, sqlite3_int64 size) {
  return Forward(FileCall::Truncate, file, &sqlite3_io_methods::xTruncate, size);
}

int Sync(sqlite3_file* file, int) { return FileOf(file).owner->Begin(FileCall::Sync, FileOf(file).subject); }

int FileSize(sqlite3_file* file, sqlite3_int64* size) {
  return Forward(FileCall::FileSize, file, &sqlite3_io_methods::xFileSize, size);
}

int Lock(sqlite3_file* file, int level) { return Forward(FileCall::Lock, file, &sqlite3_io_methods::xLock, level); }

int Unlock(sqlite3_file* file, int level) {
  return Forward(FileCall::Unlock, file, &sqlite3_io_methods::xUnlock, level);
}

int CheckReservedLock(sqlite3_file* file, int* result) {
  return FileOf(file).RealMethods().xCheckReservedLock(FileOf(file).Real(), result);
}

int FileControl(sqlite3_file* file, int operation, void* argument) {
  return FileOf(file).RealMethods().xFileControl(FileOf(file).Real(), operation, argument);
}

int SectorSize(sqlite3_file* file) { return FileOf(file).RealMethods().xSectorSize(FileOf(file).Real()); }

int DeviceCharacteristics(sqlite3_file* file) {
  return FileOf(file).RealMethods().xDeviceCharacteristics(FileOf(file).Real());
}

constexpr sqlite3_io_methods kMethods{
    .iVersion = 1,
    .xClose = Close,
    .xRead = Read,
    .xWrite = Write,
    .xTruncate = Truncate,
    .xSync = Sync,
    .xFileSize = FileSize,
    .xLock = Lock,
    .xUnlock = Unlock,
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

FaultVfs& Owner(sqlite3_vfs* vfs) { return *static_cast<FaultVfs*>(vfs->pAppData); }

sqlite3_vfs* RealVfs(sqlite3_vfs* vfs) { return Owner(vfs).Real(); }

const char* SubjectOf(const char* name) {
  return name != nullptr && std::strstr(name, "-journal") != nullptr ? "journal" : "database";
}

const char* SubjectOf(const char* name, int flags) {
  return (flags & (SQLITE_OPEN_MAIN_DB | SQLITE_OPEN_MAIN_JOURNAL)) == 0 ? "other" : SubjectOf(name);
}

int Open(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags, int* outFlags) {
  File& self = FileOf(file);
  self.owner = &Owner(vfs);
  self.subject = SubjectOf(name, flags);
  self.base.pMethods = nullptr;  // SQLite closes nothing then
  if (const int fault = self.owner->Begin(FileCall::Open, self.subject); fault != SQLITE_OK) {
    return fault;
  }
  const int result = RealVfs(vfs)->xOpen(RealVfs(vfs), name, self.Real(), flags, outFlags);
  if (self.Real()->pMethods != nullptr) {
    self.base.pMethods = &kMethods;
  }
  return result;
}

int Delete(sqlite3_vfs* vfs, const char* name, int) {
  constexpr int kDoNotSyncDirectory = 0;
  const int fault = Owner(vfs).Begin(FileCall::Delete, SubjectOf(name));
  return fault != SQLITE_OK ? fault : RealVfs(vfs)->xDelete(RealVfs(vfs), name, kDoNotSyncDirectory);
}

int Access(sqlite3_vfs* vfs, const char* name, int flags, int* result) {
  const int fault = Owner(vfs).Begin(FileCall::Access, SubjectOf(name));
  return fault != SQLITE_OK ? fault : RealVfs(vfs)->xAccess(RealVfs(vfs), name, flags, result);
}

}  // namespace

FaultVfs::FaultVfs() : real_(sqlite3_vfs_find(nullptr)), vfs_(std::make_unique<sqlite3_vfs>(*real_)) {
  // Calls that are not about files stay the real one's; they do not use the private data that is replaced here.
  vfs_->szOsFile = static_cast<int>(sizeof(File)) + real_->szOsFile;
  vfs_->zName = "fault";
  vfs_->pNext = nullptr;
  vfs_->pAppData = this;
  vfs_->xOpen = Open;
  vfs_->xDelete = Delete;
  vfs_->xAccess = Access;
  sqlite3_vfs_register(vfs_.get(), 1);
}

FaultVfs::~FaultVfs() { sqlite3_vfs_unregister(vfs_.get()); }

void FaultVfs::Fail(FileCall call, int nth, int result) { Fail(call, nth, result, FaultSpan::Once); }

void FaultVfs::FailFrom(FileCall call, int nth, int result) { Fail(call, nth, result, FaultSpan::FromThenOn); }

void FaultVfs::Fail(FileCall call, int nth, int result, FaultSpan span) {
  const int index = Count(call) + nth;
  faults_.insert({call, {index, span == FaultSpan::Once ? index : INT_MAX, result}});
}

int FaultVfs::Count(FileCall call) const { return counts_[static_cast<std::size_t>(call)]; }

void FaultVfs::ResetCounts() {
  counts_ = {};
  failures_ = 0;
  faults_.clear();
}

int FaultVfs::Begin(FileCall call, const char* subject) {
  static constexpr const char* kNames[] = {"open", "close", "read",   "write",  "truncate", "sync",
                                           "size", "lock",  "unlock", "delete", "access"};
  if (listener_) {
    listener_(std::string(kNames[static_cast<int>(call)]) + " " + subject);
  }
  const int index = ++counts_[static_cast<std::size_t>(call)];
  const auto [first, last] = faults_.equal_range(call);
  for (auto fault = first; fault != last; ++fault) {
    if (index >= fault->second.first && index <= fault->second.last) {
      ++failures_;
      return fault->second.result;
    }
  }
  return SQLITE_OK;
}

}  // namespace support
