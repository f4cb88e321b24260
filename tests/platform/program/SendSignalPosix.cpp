#include <unistd.h>

#include <csignal>

#include "tests/platform/program/SendSignal.h"

namespace testing_support {

void SendInterrupt() { kill(getpid(), SIGINT); }
void SendTerminate() { kill(getpid(), SIGTERM); }
void SendHangUp() { kill(getpid(), SIGHUP); }

}  // namespace testing_support
