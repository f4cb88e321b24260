#include "tests/support/AllocationFaults.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

#include "tests/support/AllocationRecord.h"
#include "tests/support/UsableSize.h"

namespace {

using support::Allocator;
using support::FaultSpan;

// The fault that is under way on this thread.
thread_local int remaining = 0;  // allocations up to and including the one that fails; 0: none will
thread_local bool failsFromThenOn = false;
thread_local Allocator failing = Allocator::New;
thread_local bool happened = false;

// The fault that is under way on all threads.
std::atomic<bool> isProcessFailing = false;
std::atomic<bool> processFailsFromThenOn = false;
std::atomic<int> processRemaining = 0;  // as above, and zero or less from then on
std::atomic<bool> processHappened = false;

bool IsProcessMadeToFail() noexcept {
  if (!isProcessFailing) {
    return false;
  }
  const int left = --processRemaining;
  if (left > 0 || (left < 0 && !processFailsFromThenOn)) {
    return false;
  }
  processHappened = true;
  return true;
}

// What the record that is under way on this thread has seen.
thread_local bool isRecording = false;
thread_local std::ptrdiff_t liveBytes = 0;
thread_local std::ptrdiff_t peakBytes = 0;

void Record(void* memory) noexcept {
  if (isRecording && memory != nullptr) {
    liveBytes += static_cast<std::ptrdiff_t>(support::UsableSize(memory));
    peakBytes = std::max(peakBytes, liveBytes);
  }
}

void* Allocate(std::size_t size) noexcept {
  if (IsProcessMadeToFail() || support::IsAllocationMadeToFail(Allocator::New)) {
    return nullptr;
  }
  void* memory = std::malloc(size == 0 ? 1 : size);
  Record(memory);
  return memory;
}

void Free(void* memory) noexcept {
  if (isRecording && memory != nullptr) {
    liveBytes -= static_cast<std::ptrdiff_t>(support::UsableSize(memory));
  }
  std::free(memory);
}

void* AllocateOrThrow(std::size_t size) {
  void* memory = Allocate(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace

void* operator new(std::size_t size) { return AllocateOrThrow(size); }
void* operator new[](std::size_t size) { return AllocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void operator delete(void* memory) noexcept { Free(memory); }
void operator delete[](void* memory) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t) noexcept { Free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { Free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { Free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { Free(memory); }

namespace support {

bool IsAllocationMadeToFail(Allocator allocator) noexcept {
  if (remaining == 0 || (failing != allocator && failing != Allocator::Both)) {
    return false;
  }
  if (remaining > 1) {
    --remaining;
    return false;
  }
  happened = true;
  remaining = failsFromThenOn ? 1 : 0;
  return true;
}

AllocationFault::AllocationFault(Allocator allocator, int nth, FaultSpan span) {
  happened = false;
  failing = allocator;
  failsFromThenOn = span == FaultSpan::FromThenOn;
  remaining = nth;
}

AllocationFault::~AllocationFault() { Stop(); }

void AllocationFault::Stop() { remaining = 0; }

bool AllocationFault::Happened() const { return happened; }

ProcessAllocationFault::ProcessAllocationFault(int nth, FaultSpan span) {
  processHappened = false;
  processFailsFromThenOn = span == FaultSpan::FromThenOn;
  processRemaining = nth;
  isProcessFailing = true;
}

ProcessAllocationFault::~ProcessAllocationFault() { Stop(); }

void ProcessAllocationFault::Stop() { isProcessFailing = false; }

bool ProcessAllocationFault::Happened() const { return processHappened; }

AllocationRecord::AllocationRecord() {
  liveBytes = 0;
  peakBytes = 0;
  isRecording = true;
}

AllocationRecord::~AllocationRecord() { isRecording = false; }

std::size_t AllocationRecord::PeakBytes() const { return static_cast<std::size_t>(peakBytes); }

}  // namespace support
