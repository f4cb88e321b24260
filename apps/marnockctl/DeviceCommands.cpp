#include "apps/marnockctl/DeviceCommands.h"

#include <stdexcept>

#include "apps/json/ByteText.h"
#include "apps/json/RecordJson.h"
#include "apps/marnockctl/RecordInput.h"
#include "apps/marnockctl/RecordTable.h"
#include "client/InputChecks.h"

namespace KT {

namespace {

std::string HowMany(std::size_t count, const char* family) {
  return std::to_string(count) + " " + family + (count == 1 ? " device" : " devices");
}

template <class Family>
void PrintList(const std::vector<typename Family::Record>& list, Reporter& reporter) {
  if (reporter.Json()) {
    Json devices = Json::array();
    for (const auto& record : list) {
      devices.push_back(RecordToJson(record));
    }
    reporter.Print(Json{{"result", kResultSuccess}, {"devices", std::move(devices)}});
    return;
  }
  if (const std::string table = Table(list); !table.empty()) {
    reporter.Print(table);
  }
  reporter.Print(HowMany(list.size(), Family::kName));
}

}  // namespace

template <class Family>
ExitStatus Run(const DeviceSet<Family>& command, RegistryClient& client, Reporter& reporter) {
  typename Family::Record record;
  try {
    record = ReadRecordInput(command);
  } catch (const std::runtime_error& error) {
    reporter.Complain(error.what());
    return ExitStatus::WrongUse;
  }
  if (!reporter.Acceptable({WhyNotAKey("SUMID", command.sumId), WhyNotSendable(record)})) {
    return ExitStatus::WrongUse;
  }
  if (!command.force) {
    if (const auto why = WhyNotReadable<Family>(record, client.PkgName()); why.has_value()) {
      reporter.Complain(*why + " (--force stores it all the same)");
      return ExitStatus::WrongUse;
    }
  }
  return reporter.Change((client.*Family::kSet)(command.sumId, record));
}

template <class Family>
ExitStatus Run(const DeviceGet<Family>& command, RegistryClient& client, Reporter& reporter) {
  if (!reporter.Acceptable({WhyNotAKey("SUMID", command.sumId)})) {
    return ExitStatus::WrongUse;
  }
  const auto outcome = (client.*Family::kGet)(command.sumId);
  if (!outcome.Succeeded()) {
    return reporter.Fail(outcome);
  }
  if (outcome.response.info == typename Family::Record{}) {
    reporter.Complain(std::string("no ") + Family::kName + " device has the sumId \"" + ToTerminalText(command.sumId) +
                      "\"");
    return ExitStatus::NotFound;
  }
  if (reporter.Json()) {
    reporter.Print(Json{{"result", outcome.response.result},
                        {"sumId", ToJson(command.sumId)},
                        {"device", RecordToJson(outcome.response.info)}});
  } else {
    reporter.Print(FieldLines(outcome.response.info));
  }
  return ExitStatus::Done;
}

template <class Family>
ExitStatus Run(const DeviceList<Family>&, RegistryClient& client, Reporter& reporter) {
  const auto outcome = (client.*Family::kList)();
  if (outcome.status == CallStatus::Refused && outcome.ipcStatus == IpcStatus::UnsendableAnswer) {
    reporter.Complain(std::string("the list of ") + Family::kName + " devices passes the " +
                      std::to_string(Family::kListReplyCapacity) +
                      " bytes that the service's reply holds (status 3); get the devices one by one");
    return ExitStatus::ServiceFailed;
  }
  if (!outcome.Succeeded()) {
    return reporter.Fail(outcome);
  }
  PrintList<Family>(outcome.response.list, reporter);
  return ExitStatus::Done;
}

template <class Family>
ExitStatus Run(const DeviceDelete<Family>& command, RegistryClient& client, Reporter& reporter) {
  if (!reporter.Acceptable({WhyNotAKey("SUMID", command.sumId)})) {
    return ExitStatus::WrongUse;
  }
  return reporter.Change((client.*Family::kDelete)(command.sumId));
}

template ExitStatus Run(const DeviceSet<TrustedFamily>&, RegistryClient&, Reporter&);
template ExitStatus Run(const DeviceGet<TrustedFamily>&, RegistryClient&, Reporter&);
template ExitStatus Run(const DeviceList<TrustedFamily>&, RegistryClient&, Reporter&);
template ExitStatus Run(const DeviceDelete<TrustedFamily>&, RegistryClient&, Reporter&);
template ExitStatus Run(const DeviceSet<CurrentFamily>&, RegistryClient&, Reporter&);
template ExitStatus Run(const DeviceGet<CurrentFamily>&, RegistryClient&, Reporter&);
template ExitStatus Run(const DeviceList<CurrentFamily>&, RegistryClient&, Reporter&);
template ExitStatus Run(const DeviceDelete<CurrentFamily>&, RegistryClient&, Reporter&);

}  // namespace KT
