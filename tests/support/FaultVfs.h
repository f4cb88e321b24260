// SQLite's file calls, counted, and made to fail at will.
#pragma once

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "tests/support/FaultSpan.h"

struct sqlite3_vfs;

namespace support {

enum class FileCall { Open, Close, Read, Write, Truncate, Sync, FileSize, Lock, Unlock, Delete, Access };
inline constexpr std::size_t kFileCalls = 11;

// SQLite's default file system for as long as it lives, on top of the previous one. Every database opened meanwhile
// must be closed before it goes, memory databases too. No WAL and no memory mapping. Syncs are counted and can fail,
// but do not reach the disk: a test's files need not survive a power cut. One thread.
class FaultVfs {
 public:
  FaultVfs();
  ~FaultVfs();

  FaultVfs(const FaultVfs&) = delete;
  FaultVfs& operator=(const FaultVfs&) = delete;

  // The n-th call of that kind from now on (1 is the next one) does nothing and answers `result`, an SQLITE_ code.
  // Close closes all the same, since SQLite does not try again.
  void Fail(FileCall call, int nth, int result);

  // Likewise, and so does every later call of that kind: a disk that stays full.
  void FailFrom(FileCall call, int nth, int result);

  // Fail or FailFrom.
  void Fail(FileCall call, int nth, int result, FaultSpan span);

  // Nothing fails any more.
  void Heal() { faults_.clear(); }

  // Calls of any kind that were made to fail, since construction or ResetCounts.
  int Failures() const { return failures_; }

  // Calls of that kind since construction or ResetCounts.
  int Count(FileCall call) const;
  void ResetCounts();

  // Gets every call as it begins: "open database", "write journal", "delete journal" ...; "other" for files that are
  // neither.
  void SetListener(std::function<void(const std::string& event)> listener) { listener_ = std::move(listener); }

  // For the functions that SQLite calls: what the call answers, 0 for what the real file system says.
  int Begin(FileCall call, const char* subject);
  sqlite3_vfs* Real() const { return real_; }

 private:
  struct Fault {
    int first;
    int last;
    int result;
  };

  sqlite3_vfs* const real_;
  const std::unique_ptr<sqlite3_vfs> vfs_;
  std::array<int, kFileCalls> counts_{};
  int failures_ = 0;
  std::multimap<FileCall, Fault> faults_;
  std::function<void(const std::string&)> listener_;
};

}  // namespace support
