// How a call to the service can end.
#pragma once

#include <string>

#include "platform/ipc/TagIPCMessageItem.h"

namespace KT {

enum class CallStatus {
  Answered,         // the service answered; `result` in the response says how it went
  RequestTooLarge,  // nothing was sent: the request passes the 10,240 bytes that the service decodes
  NoService,        // nothing was sent: no hub at the pipe, or none that takes the connection, before the time was over
  TimedOut,         // sent, but no answer in time: the service may or may not have acted
  ConnectionLost,   // sent, and the connection ended before the answer came: as TimedOut
  Refused,          // the IPC library answered in the service's place: see the IpcStatus beside it
  UnreadableAnswer,  // an answer came that is not the message that belongs to the request
};

// What an answer of the IPC library itself means for the caller, in English.
std::string Describe(IpcStatus status);

}  // namespace KT
