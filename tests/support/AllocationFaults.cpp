#include "tests/support/AllocationFaults.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

using support::Allocator;
using support::FaultSpan;

// The fault that is under way on this thread.
thread_local int remaining = 0;  // allocations up to and including the one that fails; 0: none will
thread_local bool failsFromThenOn = false;
thread_local Allocator failing = Allocator::New;
thread_local bool happened = false;

void* Allocate(std::size_t size) noexcept {
  return support::IsAllocationMadeToFail(Allocator::New) ? nullptr : std::malloc(size == 0 ? 1 : size);
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
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { std::free(memory); }

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

}  // namespace support
