#include "apps/marnockctl/Reporter.h"

#include <ostream>

namespace KT {

namespace {

const char* Meaning(int result) {
  switch (result) {
    case kResultReadOrPeerFailed:
      return "a read failed, or a change to the peers";
    case kResultTapChangeFailed:
      return "a change to a device table failed";
    default:
      return "a code that this tool does not know";
  }
}

}  // namespace

void Reporter::Print(const std::string& line) { out_ << line << '\n'; }

void Reporter::Print(const KT::Json& document) { out_ << document.dump() << '\n'; }

void Reporter::Complain(const std::string& message) { err_ << "marnockctl: " << message << '\n'; }

bool Reporter::Acceptable(std::initializer_list<std::optional<std::string>> reasons) {
  bool acceptable = true;
  for (const auto& reason : reasons) {
    if (reason.has_value()) {
      Complain(*reason);
      acceptable = false;
    }
  }
  return acceptable;
}

void Reporter::PrintDone(int result) {
  if (json_) {
    Print(KT::Json{{"result", result}});
  } else {
    Print(std::string("done"));
  }
}

ExitStatus Reporter::FailedResult(int result) {
  if (json_) {
    Print(KT::Json{{"result", result}});
  }
  Complain("the service answered " + std::to_string(result) + ": " + Meaning(result) + "; its log says why");
  return ExitStatus::ServiceFailed;
}

ExitStatus Reporter::StatusOf(CallStatus status, IpcStatus ipcStatus) {
  switch (status) {
    case CallStatus::Answered:
      return ExitStatus::Done;
    case CallStatus::RequestTooLarge:
      return ExitStatus::WrongUse;
    case CallStatus::NoService:
    case CallStatus::TimedOut:
    case CallStatus::ConnectionLost:
      return ExitStatus::NoAnswer;
    case CallStatus::Refused:
      return ipcStatus == IpcStatus::NoSuchReceiver || ipcStatus == IpcStatus::NoCallback ? ExitStatus::NoAnswer
                                                                                          : ExitStatus::ServiceFailed;
    case CallStatus::UnreadableAnswer:
      return ExitStatus::ServiceFailed;
  }
  return ExitStatus::ServiceFailed;
}

}  // namespace KT
