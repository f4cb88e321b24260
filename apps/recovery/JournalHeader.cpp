#include "apps/recovery/JournalHeader.h"

#include <bit>
#include <cstddef>
#include <cstdint>

#include "apps/recovery/BigEndian.h"

namespace KT {

namespace {

constexpr std::string_view kMagic("\xd9\xd5\x05\xf9\x20\xa1\x63\xd7", 8);

// Behind the magic number stand, as big-endian 32-bit numbers: the count of records, a nonce, and these.
constexpr std::size_t kPagesBefore = 16;
constexpr std::size_t kSectorBytes = 20;
constexpr std::size_t kPageBytes = 24;
constexpr std::size_t kHeaderBytes = 28;

std::uint64_t NumberAt(std::string_view bytes, std::size_t offset) { return BigEndian(bytes.substr(offset, 4)); }

bool IsPowerOfTwoBetween(std::uint64_t low, std::uint64_t number, std::uint64_t high) {
  return number >= low && number <= high && std::has_single_bit(number);
}

}  // namespace

JournalKind KindOfJournal(std::string_view bytes) {
  const bool fresh = bytes.size() >= kHeaderBytes && bytes.starts_with(kMagic) && NumberAt(bytes, kPagesBefore) == 0 &&
                     IsPowerOfTwoBetween(32, NumberAt(bytes, kSectorBytes), 65536) &&
                     IsPowerOfTwoBetween(512, NumberAt(bytes, kPageBytes), 65536);
  return fresh ? JournalKind::Fresh : JournalKind::Other;
}

}  // namespace KT
