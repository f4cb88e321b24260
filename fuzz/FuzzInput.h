// The bytes of one fuzzing input, taken from the front.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace fuzz {

// Stops the fuzzer with the input at hand when something that must hold does not.
inline void Require(bool holds) {
  if (!holds) std::abort();
}

class FuzzInput {
 public:
  FuzzInput(const std::uint8_t* data, std::size_t size) : cursor_(data), left_(size) {}

  bool Empty() const { return left_ == 0; }

  // The next value; what the input no longer has is zero.
  template <class Value>
  Value Take() {
    Value value{};
    const std::size_t size = std::min(left_, sizeof(value));
    if (size > 0) std::memcpy(&value, cursor_, size);
    Skip(size);
    return value;
  }

  std::vector<std::uint8_t> TakeBytes(std::size_t most) {
    const std::size_t size = std::min(left_, most);
    std::vector<std::uint8_t> bytes(cursor_, cursor_ + size);
    Skip(size);
    return bytes;
  }

  std::string TakeText(std::size_t most) {
    const std::vector<std::uint8_t> bytes = TakeBytes(most);
    return {bytes.begin(), bytes.end()};
  }

 private:
  void Skip(std::size_t size) {
    cursor_ += size;
    left_ -= size;
  }

  const std::uint8_t* cursor_;
  std::size_t left_;
};

}  // namespace fuzz
