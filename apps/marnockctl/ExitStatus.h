// How marnockctl ends.
#pragma once

namespace KT {

enum class ExitStatus : int {
  Done = 0,
  ServiceFailed = 1,  // the service answered with a failure code, or could not answer
  WrongUse = 2,       // the command or its input is wrong; nothing was sent
  NoAnswer = 3,       // no service, or no answer in time
  NotFound = 4,       // a get found nothing, or there is no such file

  // Of the store commands, which look at files and ask no service.
  NeedsRepair = 1,  // nothing is lost, but something is to be repaired; or a damaged file's rows that can be read
  Lost = 2,         // something cannot be brought back
  Undecided = 3,    // a file cannot be read, or the host runs where it must not
};

}  // namespace KT
