// Whether another program works on a database file.
#pragma once

#include <string>

namespace KT {

enum class LockProbe {
  Free,        // nobody reads or writes it through SQLite
  Locked,      // somebody does
  Unopenable,  // it cannot be opened
};

// Tries for the lock that a change to the file would need, with SQLite's own locking and without opening the file as a
// database: nothing is rolled back. The lock is released at once. `sqliteFileName`: OperatingSystem::SqliteFileName of
// a file that is there. No connection of this process to the file may be open: on POSIX it would lose its locks.
LockProbe ProbeDatabaseLock(const std::string& sqliteFileName);

}  // namespace KT
