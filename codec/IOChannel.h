// A run of bytes that can be read or written front to back.
#pragma once

#include <cstdint>

namespace cohesa {

// What every operation of a channel or stream returns when it failed, instead of a count of bytes.
inline constexpr std::uint32_t kFailed = 0xFFFFFFFF;

class IOChannel {
 public:
  virtual ~IOChannel() = default;

  // Take the next n bytes, or append n bytes, completely or not at all. Return n, or kFailed.
  virtual std::uint32_t Read(std::uint8_t* dst, std::uint32_t n) = 0;
  virtual std::uint32_t Write(const void* src, std::uint32_t n) = 0;
};

}  // namespace cohesa
