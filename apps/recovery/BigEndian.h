// Numbers as SQLite's files hold them.
#pragma once

#include <cstdint>
#include <string_view>

namespace KT {

// The unsigned number that up to 8 bytes spell, the most significant first; 0 for none.
inline std::uint64_t BigEndian(std::string_view bytes) {
  std::uint64_t number = 0;
  for (const char byte : bytes) {
    number = number << 8 | static_cast<unsigned char>(byte);
  }
  return number;
}

}  // namespace KT
