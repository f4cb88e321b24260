// How large a payload may be.
#pragma once

#include <cstddef>
#include <cstdint>

namespace KT {

// The largest payload that a parcel accepts, in either direction. A larger request is not decoded at all.
inline constexpr std::int32_t kMaxPayloadBytes = 10240;

// What a writing parcel holds behind its capacity. In a message that does not fit only strings fail unnoticed, and the
// last one can make the size that the parcel reports pass the capacity by 2: by its length prefix, which counts
// although it was not written. Whoever sends that many bytes still reads the parcel's own.
inline constexpr std::size_t kSpareBytes = 2;

}  // namespace KT
