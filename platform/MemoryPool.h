// How a process that runs for long keeps its memory. Only the GNU C library needs to be told.
#pragma once

namespace platform {

// Has all threads take their memory from one pool. With a pool for each thread it would depend on who freed what last
// how much of a burst stays with the process, which would seem to grow. Call it before any thread is started.
void UseOneMemoryPool();

// Gives memory that is free back to the system. Any thread; those that want memory meanwhile wait for it.
void ReturnFreeMemory();

}  // namespace platform
