// How large a payload may be.
#pragma once

#include <cstddef>
#include <cstdint>

namespace KT {

// The largest payload that a parcel accepts, in either direction. A larger request is not decoded at all.
inline constexpr std::int32_t kMaxPayloadBytes = 10240;

// What reading a message may take at most, whatever its bytes announce: a string is read with its announced length of
// up to 32,767 bytes even where those bytes are missing. A message without a list has at most 12 strings, a list as
// many records as fit into the largest payload. Only answers have lists, and only clients read those.
inline constexpr std::size_t kMostMessageMemoryBytes = std::size_t{512} * 1024;
inline constexpr std::size_t kMostListMemoryBytes = std::size_t{40} * 1024 * 1024;

// What a writing parcel holds behind its capacity. In a message that does not fit only strings fail unnoticed, and the
// last one can make the size that the parcel reports pass the capacity by 2: by its length prefix, which counts
// although it was not written. Whoever sends that many bytes still reads the parcel's own.
inline constexpr std::size_t kSpareBytes = 2;

}  // namespace KT
