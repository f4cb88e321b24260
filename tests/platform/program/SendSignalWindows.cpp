#include <windows.h>

#include "tests/platform/program/SendSignal.h"

namespace testing_support {

void SendInterrupt() { GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0); }
void SendTerminate() { SendInterrupt(); }
void SendHangUp() { SendInterrupt(); }

}  // namespace testing_support
