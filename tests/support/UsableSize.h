#pragma once

#include <cstddef>

namespace support {

// How large a block from std::malloc is; not null.
std::size_t UsableSize(void* memory) noexcept;

}  // namespace support
