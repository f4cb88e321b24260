#include "apps/marnock-host/StatusDocument.h"

#include "apps/json/JsonDocument.h"
#include "codec/Protocol.h"

namespace KT {

namespace {

Json SavesJson(const SaveCounts& saves) {
  return {{"saved", saves.saved}, {"failedSinceLastSaved", saves.failedSinceLastSaved}};
}

Json RequestJson(const RequestStatus& request) {
  const RequestCounts& counts = request.counts;
  return {{"code", request.code},
          {"name", request.name},
          {"received", counts.received},
          {"results",
           {{std::to_string(kResultSuccess), counts.succeeded},
            {std::to_string(kResultReadOrPeerFailed), counts.readOrPeerFailed},
            {std::to_string(kResultTapChangeFailed), counts.tapChangeFailed}}},
          {"unanswered", counts.unanswered}};
}

}  // namespace

std::string StatusDocument(std::chrono::seconds uptime, const HubCounters& hub, const ServiceStatus& service) {
  Json requests = Json::array();
  for (const RequestStatus& request : service.requests) {
    requests.push_back(RequestJson(request));
  }
  const Json document{
      {"uptimeSeconds", uptime.count()},
      {"connections",
       {{"now", hub.connections}, {"most", hub.mostConnections}, {"refused", hub.refused}, {"cutOff", hub.cutOff}}},
      {"framesRouted", hub.framesRouted},
      {"saves",
       {{"trusted", SavesJson(service.trusted)},
        {"current", SavesJson(service.current)},
        {"peer", SavesJson(service.peer)}}},
      {"requests", std::move(requests)}};
  return document.dump();
}

}  // namespace KT
