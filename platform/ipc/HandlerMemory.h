// Room for one handler, set aside beforehand: starting an operation with it cannot fail for want of memory.
#pragma once

#include <array>
#include <asio/bind_allocator.hpp>
#include <cstddef>
#include <new>
#include <utility>

namespace platform::ipc {

// Must outlive the handler. One operation at a time: another one that is started before the handler of the first runs
// takes its memory from the heap. Not thread-safe.
class HandlerMemory {
 public:
  HandlerMemory() = default;
  HandlerMemory(const HandlerMemory&) = delete;
  HandlerMemory& operator=(const HandlerMemory&) = delete;

  void* Take(std::size_t bytes) {
    if (isTaken_ || bytes > space_.size()) {
      return ::operator new(bytes);
    }
    isTaken_ = true;
    return space_.data();
  }

  void Return(void* memory) {
    if (memory == space_.data()) {
      isTaken_ = false;
    } else {
      ::operator delete(memory);
    }
  }

 private:
  static constexpr std::size_t kBytes = 128;

  alignas(std::max_align_t) std::array<std::byte, kBytes> space_{};
  bool isTaken_ = false;
};

// What the library of a handler calls for its memory.
template <class T>
class HandlerAllocator {
 public:
  using value_type = T;

  explicit HandlerAllocator(HandlerMemory& memory) : memory_(&memory) {}
  template <class Other>
  HandlerAllocator(const HandlerAllocator<Other>& other) : memory_(other.Memory()) {}  // NOLINT: allocators convert

  T* allocate(std::size_t count) { return static_cast<T*>(memory_->Take(count * sizeof(T))); }
  void deallocate(T* memory, std::size_t) { memory_->Return(memory); }

  HandlerMemory* Memory() const { return memory_; }
  template <class Other>
  bool operator==(const HandlerAllocator<Other>& other) const {
    return memory_ == other.Memory();
  }

 private:
  HandlerMemory* memory_;
};

// `handler`, for an operation of Asio's that is to keep it in `memory`.
template <class Handler>
auto KeptIn(HandlerMemory& memory, Handler handler) {
  return asio::bind_allocator(HandlerAllocator<std::byte>(memory), std::move(handler));
}

}  // namespace platform::ipc
