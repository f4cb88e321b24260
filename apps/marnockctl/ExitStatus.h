// How marnockctl ends.
#pragma once

namespace KT {

enum class ExitStatus : int {
  Done = 0,
  ServiceFailed = 1,  // the service answered with a failure code, or could not answer
  WrongUse = 2,       // the command or its input is wrong; nothing was sent
  NoAnswer = 3,       // no service, or no answer in time
  NotFound = 4,       // a get found nothing
};

}  // namespace KT
