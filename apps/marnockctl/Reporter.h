// What marnockctl prints: answers on one stream, everything else on the other.
#pragma once

#include <iosfwd>
#include <nlohmann/json_fwd.hpp>
#include <string>

#include "apps/marnockctl/ExitStatus.h"
#include "client/RegistryClient.h"

namespace KT {

class Reporter {
 public:
  Reporter(std::ostream& out, std::ostream& err, bool json) : out_(out), err_(err), json_(json) {}

  bool Json() const { return json_; }
  // One line on standard output.
  void Print(const std::string& line);
  void Print(const nlohmann::json& document);
  // "marnockctl: MESSAGE" on standard error.
  void Complain(const std::string& message);

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
  ExitStatus FailedResult(int result);
  static ExitStatus StatusOf(CallStatus status, IpcStatus ipcStatus);

  std::ostream& out_;
  std::ostream& err_;
  const bool json_;
};

}  // namespace KT
