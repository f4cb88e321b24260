#pragma once

namespace support {

// Puts SQLite's memory under AllocationFault, for the rest of the process. Before anything else uses SQLite. Returns
// whether SQLite took it.
bool LetSqliteRunOutOfMemory();

}  // namespace support
