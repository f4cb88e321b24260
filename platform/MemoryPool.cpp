#include "platform/MemoryPool.h"

#include <cstdlib>  // defines __GLIBC__ where it is the GNU C library

#if defined(__GLIBC__)
#  include <malloc.h>
#endif

namespace platform {

void UseOneMemoryPool() {
#if defined(__GLIBC__)
  mallopt(M_ARENA_MAX, 1);
#endif
}

void ReturnFreeMemory() {
#if defined(__GLIBC__)
  malloc_trim(0);
#endif
}

}  // namespace platform
