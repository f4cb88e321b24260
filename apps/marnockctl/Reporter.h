// What marnockctl prints: answers on one stream, everything else on the other.
#pragma once

#include <initializer_list>
#include <iosfwd>
#include <optional>
#include <string>

#include "apps/json/JsonDocument.h"
#include "apps/marnockctl/ExitStatus.h"
#include "client/RegistryClient.h"

namespace KT {

class Reporter {
 public:
  Reporter(std::ostream& out, std::ostream& err, bool json) : out_(out), err_(err), json_(json) {}

  bool Json() const { return json_; }
  // One line on standard output, or one JSON document.
  void Print(const std::string& line);
  void Print(const KT::Json& document);
  // "marnockctl: MESSAGE" on standard error.
  void Complain(const std::string& message);
  // Complains about each reason there is; true when there is none.
  bool Acceptable(std::initializer_list<std::optional<std::string>> reasons);

  // Reports the outcome of a change and returns the exit status for it.
  template <class Response>
  ExitStatus Change(const CallOutcome<Response>& outcome) {
    if (!outcome.Succeeded()) {
      return Fail(outcome);
    }
    PrintDone(outcome.response.result);
    return ExitStatus::Done;
  }

  // Reports an outcome that is no success and returns the exit status for it.
  template <class Response>
  ExitStatus Fail(const CallOutcome<Response>& outcome) {
    if (outcome.status == CallStatus::Answered) {
      return FailedResult(outcome.response.result);
    }
    Complain(outcome.explanation);
    return StatusOf(outcome.status, outcome.ipcStatus);
  }

 private:
  void PrintDone(int result);
  ExitStatus FailedResult(int result);
  static ExitStatus StatusOf(CallStatus status, IpcStatus ipcStatus);

  std::ostream& out_;
  std::ostream& err_;
  const bool json_;
};

}  // namespace KT
