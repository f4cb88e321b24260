// The requests to stop that a program may get, sent by the program to itself.
#pragma once

namespace testing_support {

void SendInterrupt();  // POSIX: SIGINT; Windows: Ctrl-C in the program's console
void SendTerminate();  // POSIX: SIGTERM; Windows: as SendInterrupt
void SendHangUp();     // POSIX: SIGHUP; Windows: as SendInterrupt

}  // namespace testing_support
