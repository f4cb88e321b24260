#include "tests/support/AllocationFaults.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

thread_local int remaining = 0;  // allocations up to and including the one that fails; 0: none will
thread_local bool happened = false;

void* Allocate(std::size_t size) noexcept {
  if (remaining > 0 && --remaining == 0) {
    happened = true;
    return nullptr;
  }
  return std::malloc(size == 0 ? 1 : size);
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

AllocationFault::AllocationFault(int nth) {
  happened = false;
  remaining = nth;
}

AllocationFault::~AllocationFault() { remaining = 0; }

bool AllocationFault::Happened() const { return happened; }

}  // namespace support
