// Memory that runs out at a chosen moment.
#pragma once

namespace support {

// Makes one allocation of the calling thread fail: the nth from its construction on (1 is the next one). Throwing
// operator new throws std::bad_alloc, the non-throwing one returns null; every other allocation succeeds. One at a
// time.
//
// Works on what is linked into the test program itself; a DLL on Windows has an operator new of its own.
class AllocationFault {
 public:
  explicit AllocationFault(int nth);
  ~AllocationFault();
  AllocationFault(const AllocationFault&) = delete;
  AllocationFault& operator=(const AllocationFault&) = delete;

  // Whether the allocation came and failed.
  bool Happened() const;
};

}  // namespace support
