// Memory that runs out at a chosen moment.
#pragma once

#include "tests/support/FaultSpan.h"

namespace support {

// Who asks for memory.
enum class Allocator {
  New,     // operator new: a throwing one throws std::bad_alloc, a non-throwing one returns null
  Sqlite,  // SQLite, where the program calls LetSqliteRunOutOfMemory (tests/support/SqliteAllocationFaults.h)
  Both,
};

// Makes allocations of the calling thread fail from its construction until its end or Stop: the nth (1 is the next
// one), and with FromThenOn all that follow it. One at a time.
//
// Works on what is linked into the test program itself; a DLL on Windows has an operator new of its own.
class AllocationFault {
 public:
  explicit AllocationFault(int nth) : AllocationFault(Allocator::New, nth, FaultSpan::Once) {}
  AllocationFault(Allocator allocator, int nth, FaultSpan span);
  ~AllocationFault();
  AllocationFault(const AllocationFault&) = delete;
  AllocationFault& operator=(const AllocationFault&) = delete;

  void Stop();

  // Whether the allocation came and failed.
  bool Happened() const;
};

// The same for operator new on whichever thread calls it. One at a time, and none of the above beside it.
class ProcessAllocationFault {
 public:
  ProcessAllocationFault(int nth, FaultSpan span);
  ~ProcessAllocationFault();
  ProcessAllocationFault(const ProcessAllocationFault&) = delete;
  ProcessAllocationFault& operator=(const ProcessAllocationFault&) = delete;

  void Stop();

  // Whether the allocation came and failed.
  bool Happened() const;
};

// For an allocator other than operator new: whether its next allocation is to fail.
bool IsAllocationMadeToFail(Allocator allocator) noexcept;

}  // namespace support
