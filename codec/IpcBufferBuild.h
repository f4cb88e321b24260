// A channel over a fixed buffer of the caller's.
#pragma once

#include <cstdint>
#include <cstring>

#include "codec/IOChannel.h"

namespace cohesa {

// Either read or written, never both; never grows. The buffer must outlive the channel. One thread at a time.
class IpcBufferBuild final : public IOChannel {
 public:
  // `size` is the capacity of `buffer` in bytes. Over a null buffer every operation reports success and moves nothing.
  IpcBufferBuild(std::uint8_t* buffer, std::uint32_t size, bool forReading)
      : size_(size), base_(buffer), cursor_(buffer), forReading_(forReading) {}

  // A null `dst` or `src` counts as done and moves nothing. Reading a channel made for writing, or the other way round,
  // fails, and so does anything that passes the end of the buffer; the cursor then stays where it was.
  // Defined here because every primitive of every message goes through them.
  std::uint32_t Read(std::uint8_t* dst, std::uint32_t n) override {
    if (dst == nullptr || cursor_ == nullptr) return n;
    if (!forReading_ || n > Remaining()) return kFailed;
    std::memcpy(dst, cursor_, n);
    cursor_ += n;
    return n;
  }

  std::uint32_t Write(const void* src, std::uint32_t n) override {
    if (src == nullptr || cursor_ == nullptr) return n;
    if (forReading_ || n > Remaining()) return kFailed;
    std::memcpy(cursor_, src, n);
    cursor_ += n;
    return n;
  }

  // Where the next n bytes are to be written, with the cursor already behind them, or null where Write would not move.
  std::uint8_t* Claim(std::uint32_t n) {
    if (cursor_ == nullptr || forReading_ || n > Remaining()) return nullptr;
    std::uint8_t* const start = cursor_;
    cursor_ += n;
    return start;
  }

  // Whether there is a buffer at all: without one a reader never meets an end.
  bool HasBuffer() const { return cursor_ != nullptr; }

 private:
  std::uint32_t Remaining() const { return size_ - static_cast<std::uint32_t>(cursor_ - base_); }

  std::uint32_t size_;
  std::uint8_t* base_;
  std::uint8_t* cursor_;
  bool forReading_;
};

}  // namespace cohesa
