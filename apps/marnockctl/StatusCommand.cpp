#include "apps/marnockctl/StatusCommand.h"

#include <exception>

#include "apps/json/JsonDocument.h"
#include "apps/marnockctl/StatusReport.h"

namespace KT {

ExitStatus Run(const HostStatus&, RegistryClient& client, Reporter& reporter) {
  const auto outcome = client.GetHostStatus();
  if (!outcome.Succeeded()) {
    return reporter.Fail(outcome);
  }
  try {
    const Json document = ParseJson(outcome.response.document);
    const StatusReport report = ReportStatus(document);
    if (reporter.Json()) {
      reporter.Print(document);
    } else {
      reporter.Print(report.text);
    }
    for (const std::string& warning : report.warnings) {
      reporter.Complain(warning);
    }
  } catch (const std::exception& error) {
    reporter.Complain(std::string("the host's status cannot be read: ") + error.what());
    return ExitStatus::ServiceFailed;
  }
  return ExitStatus::Done;
}

}  // namespace KT
