#include <malloc.h>

#include "tests/support/UsableSize.h"

namespace support {

std::size_t UsableSize(void* memory) noexcept { return _msize(memory); }

}  // namespace support
