#include "apps/marnockctl/PeerCommands.h"

#include "apps/json/ByteText.h"
#include "apps/marnockctl/AnswerSize.h"
#include "client/InputChecks.h"

namespace KT {

namespace {

// A get of an absent peer is answered with an empty sumId, so an empty one could not be told from it; nor could a get
// give back one that passes its reply's capacity.
std::optional<std::string> WhyNotASumId(const std::string& sumId) {
  if (sumId.empty()) {
    return "SUMID is empty: it could not be told from a peer that is not there";
  }
  PeerSumGetResponse answer;
  answer.sumId = sumId;
  return WhyNotAnAnswer(answer);
}

}  // namespace

ExitStatus Run(const PeerSet& command, RegistryClient& client, Reporter& reporter) {
  if (!reporter.Acceptable({WhyNotAKey("UDID", command.udId), WhyNotASumId(command.sumId)})) {
    return ExitStatus::WrongUse;
  }
  return reporter.Change(client.SetPeerDevice(command.udId, command.sumId));
}

ExitStatus Run(const PeerGet& command, RegistryClient& client, Reporter& reporter) {
  if (!reporter.Acceptable({WhyNotAKey("UDID", command.udId)})) {
    return ExitStatus::WrongUse;
  }
  const auto outcome = client.GetPeerDevice(command.udId);
  if (!outcome.Succeeded()) {
    return reporter.Fail(outcome);
  }
  if (outcome.response.sumId.empty()) {
    reporter.Complain("no peer has the udId \"" + ToTerminalText(command.udId) + "\"");
    return ExitStatus::NotFound;
  }
  if (reporter.Json()) {
    reporter.Print(Json{{"result", outcome.response.result},
                        {"udId", ToJson(command.udId)},
                        {"sumId", ToJson(outcome.response.sumId)}});
  } else {
    reporter.Print(ToTerminalText(outcome.response.sumId));
  }
  return ExitStatus::Done;
}

ExitStatus Run(const PeerDelete& command, RegistryClient& client, Reporter& reporter) {
  if (!reporter.Acceptable({WhyNotAKey("UDID", command.udId)})) {
    return ExitStatus::WrongUse;
  }
  return reporter.Change(client.DeletePeerDevice(command.udId));
}

}  // namespace KT
