// What the IPC library writes to the log, all of it at level 4.
#pragma once

#include "platform/ipc/Frame.h"

namespace platform::ipc {

// Hub: the beginning of a line about one connection. Its process and, once it has one, its id follow, then the reason.
inline constexpr const char* kCutOff = "IPC connection of process ";
inline constexpr const char* kWithId = ", client ";

// Hub: reasons to end a connection.
inline constexpr const char* kTooManyConnections = " refused: as many connections as are allowed are open";
inline constexpr const char* kNoHello = " closed: its first frame is not a hello";
inline constexpr const char* kSecondHello = " closed: it said hello twice";
inline constexpr const char* kHelloTooLate = " closed: it did not say hello in time";
inline constexpr const char* kFrameTooLate = " closed: a frame of it was not complete in time";
inline constexpr const char* kHalfFrame = " closed: it ended inside a frame";
inline constexpr const char* kForgedStatus = " closed: a frame of it has a status that only the library may send";
inline constexpr const char* kNotReading = " closed: too much waits for it to be read";
inline constexpr const char* kHubFailure = " closed: ";  // an exception's text follows
inline constexpr const char* kIdTaken = " refused: the id that it wants is taken: ";
inline constexpr const char* kIdReserved = " refused: the id that it wants is reserved: ";
inline constexpr const char* kUnsupportedVersion = " refused: unknown protocol version: ";

// Hub: other failures; the error's text follows.
inline constexpr const char* kAcceptFailed = "Accepting an IPC connection failed: ";
inline constexpr const char* kHubThreadFailure = "IPC hub failure: ";
inline constexpr const char* kNoStatusDocument = "No status document: ";

// Client. The code, the status or the exception's text follows.
inline constexpr const char* kCallbackThrew = "Exception from the IPC callback for code ";
inline constexpr const char* kObserverThrew = "Exception from the IPC connection observer: ";
inline constexpr const char* kRefusedByHub = "The IPC hub refused this client with status ";
inline constexpr const char* kHubConnection = "IPC connection to the hub";
inline constexpr const char* kNoHelloAnswer = " closed: its first frame is no answer to a hello";
inline constexpr const char* kClientThreadFailure = "IPC client failure: ";

// A malformed frame's fault, as the end of a line.
inline constexpr const char* FaultText(FrameState fault) {
  switch (fault) {
    case FrameState::LengthOutOfRange:
      return " closed: the length of a frame is out of range";
    case FrameState::NameTooLong:
      return " closed: the name of a frame is longer than the frame";
    case FrameState::NameNotUtf8:
      return " closed: the name of a frame is not UTF-8";
    case FrameState::IsLastNotBool:
      return " closed: the isLast byte of a frame is neither 0 nor 1";
    case FrameState::Complete:
    case FrameState::Incomplete:
      break;
  }
  return " closed";
}

}  // namespace platform::ipc
