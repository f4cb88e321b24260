#include "client/CallStatus.h"

namespace KT {

std::string Describe(IpcStatus status) {
  switch (status) {
    case IpcStatus::Answer:
      return "answered by the service";
    case IpcStatus::NoSuchReceiver:
      return "the hub runs but the service is not connected to it (status 1)";
    case IpcStatus::NoCallback:
      return "the service does not answer this request code (status 2)";
    case IpcStatus::UnsendableAnswer:
      return "the service's answer does not fit its reply buffer (status 3)";
    case IpcStatus::IdTaken:
      return "the client id is taken (status 4)";
    case IpcStatus::IdReserved:
      return "the client id is reserved for services (status 5)";
    case IpcStatus::UnsupportedVersion:
      return "the hub does not know this protocol version (status 6)";
  }
  return "unknown status " + std::to_string(static_cast<int>(status));
}

}  // namespace KT
