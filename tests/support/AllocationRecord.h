#pragma once

#include <cstddef>

namespace support {

// Counts what the calling thread takes by operator new while it lives. One at a time, on what is linked into the test
// program itself; on Windows that leaves out what the C++ runtime's DLL takes for strings.
class AllocationRecord {
 public:
  AllocationRecord();
  ~AllocationRecord();
  AllocationRecord(const AllocationRecord&) = delete;
  AllocationRecord& operator=(const AllocationRecord&) = delete;

  // The most that was held at one time since construction, in bytes.
  std::size_t PeakBytes() const;
};

}  // namespace support
