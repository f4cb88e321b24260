// Numbers as SQLite's files hold them.
#pragma once

#include <cstddef>
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

// The size of a page that a database file states at its beginning, whether or not it makes sense; 0 where it is
// missing.
inline std::size_t StatedPageBytes(std::string_view database) {
  constexpr std::size_t kPlace = 16;
  constexpr std::size_t kLength = 2;
  if (database.size() < kPlace + kLength) {
    return 0;
  }
  const auto number = static_cast<std::size_t>(BigEndian(database.substr(kPlace, kLength)));
  return number == 1 ? 65536 : number;
}

}  // namespace KT
