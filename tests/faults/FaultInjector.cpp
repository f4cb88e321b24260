#include "tests/faults/FaultInjector.h"

#include <sqlite3.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>

#include "tests/support/SqliteAllocationFaults.h"

namespace faults {

namespace {

using support::Allocator;
using support::FaultSpan;
using support::FileCall;
using support::SystemCall;

// Before main, and so before SQLite is used.
const bool kSqliteCanRunOutOfMemory = support::LetSqliteRunOutOfMemory();

}  // namespace

const std::vector<FaultKind>& AllFaultKinds() {
  static const std::vector<FaultKind> kinds{
      {"open", FileFault{FileCall::Open, SQLITE_CANTOPEN}},
      {"close", FileFault{FileCall::Close, SQLITE_IOERR_CLOSE}},
      {"read", FileFault{FileCall::Read, SQLITE_IOERR_READ}},
      {"write", FileFault{FileCall::Write, SQLITE_IOERR_WRITE}},
      {"disk full", FileFault{FileCall::Write, SQLITE_FULL}},
      {"truncate", FileFault{FileCall::Truncate, SQLITE_IOERR_TRUNCATE}},
      {"sync", FileFault{FileCall::Sync, SQLITE_IOERR_FSYNC}},
      {"size", FileFault{FileCall::FileSize, SQLITE_IOERR_FSTAT}},
      {"lock", FileFault{FileCall::Lock, SQLITE_IOERR_LOCK}},
      {"unlock", FileFault{FileCall::Unlock, SQLITE_IOERR_UNLOCK}},
      {"delete", FileFault{FileCall::Delete, SQLITE_IOERR_DELETE}},
      {"access", FileFault{FileCall::Access, SQLITE_IOERR_ACCESS}},
      {"WTSQueryUserToken", SystemFault{SystemCall::WTSQueryUserToken, false}},
      {"ImpersonateLoggedOnUser", SystemFault{SystemCall::ImpersonateLoggedOnUser, false}},
      {"RevertToSelf", SystemFault{SystemCall::RevertToSelf, false}},
      {"GetUserNameSamCompatible", SystemFault{SystemCall::GetUserNameSamCompatible, false}},
      {"CloseHandle", SystemFault{SystemCall::CloseHandle, false}},
      {"GetFileAttributesW", SystemFault{SystemCall::GetFileAttributesW, false}},
      {"MoveFileW", SystemFault{SystemCall::MoveFileW, false}},
      {"DeleteFileW", SystemFault{SystemCall::DeleteFileW, false}},
      {"exists", SystemFault{SystemCall::Exists, false}},
      {"exists throws", SystemFault{SystemCall::Exists, true}},
      {"create_directories", SystemFault{SystemCall::CreateDirectories, false}},
      {"create_directories throws", SystemFault{SystemCall::CreateDirectories, true}},
      {"permissions throws", SystemFault{SystemCall::AddOwnerAllOthersRead, true}},
      {"memory", Allocator::Both},  // once: each allocation of either kind
      {"operator new", Allocator::New, {FaultSpan::FromThenOn}},
      {"SQLite's malloc", Allocator::Sqlite, {FaultSpan::FromThenOn}},
  };
  return kinds;
}

std::vector<FaultKind> FileFaultKinds() {
  std::vector<FaultKind> kinds;
  std::copy_if(AllFaultKinds().begin(), AllFaultKinds().end(), std::back_inserter(kinds),
               [](const FaultKind& kind) { return std::holds_alternative<FileFault>(kind.what); });
  return kinds;
}

bool IsMemoryFault(const FaultKind& kind) { return std::holds_alternative<Allocator>(kind.what); }

FaultInjector::FaultInjector(support::FakeOperatingSystem& system) : system_(system) {
  if (!kSqliteCanRunOutOfMemory) {
    throw std::logic_error("SQLite was used before its memory could be put under control");
  }
  system_.StopRecording();
}

void FaultInjector::Arm(const FaultKind& kind, int nth, FaultSpan span) {
  vfs_.ResetCounts();
  system_.Heal();
  system_.ClearCalls();
  if (const auto* file = std::get_if<FileFault>(&kind.what)) {
    vfs_.Fail(file->call, nth, file->result, span);
  } else if (const auto* system = std::get_if<SystemFault>(&kind.what)) {
    system->isThrown ? system_.Throw(system->call, nth, span)
                     : system_.Fail(system->call, nth, platform::kErrorGeneralFailure, span);
  } else {
    memory_.emplace(std::get<Allocator>(kind.what), nth, span);
  }
}

bool FaultInjector::Heal() {
  bool happened = vfs_.Failures() > 0 || system_.Failures() > 0;
  if (memory_.has_value()) {
    memory_->Stop();
    happened = memory_->Happened();
    memory_.reset();
  }
  vfs_.Heal();
  system_.Heal();
  return happened;
}

}  // namespace faults
