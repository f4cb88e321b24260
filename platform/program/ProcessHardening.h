// What a program gives up that it does not need, so that less can be made of it.
#pragma once

namespace platform {

// Call it first in main, before any thread is started and any file is made. It holds for the process's whole life.
//
// POSIX: no program that this one might start gets more rights than it has itself (no new privileges), and files and
// folders are made for their owner alone, 0600 and 0700, whatever the caller's umask was.
//
// Windows: DLLs that are loaded from here on come from the program's own folder and the system's, never from the
// current directory or the PATH, and the standard streams are passed on to no other program. All other handles that
// this project opens are not inheritable in the first place.
//
// Throws std::system_error where the system refuses: a host that cannot be hardened had better not start.
void HardenProcess();

}  // namespace platform
