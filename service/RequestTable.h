// The eleven requests, a row each: what a handler decodes, does, logs and answers. Adding a request is adding a row
// here and its one-line member to KT::Marnock.
#pragma once

#include <tuple>

#include "codec/Protocol.h"
#include "codec/messages/PeerSumMessages.h"
#include "persistence/DevicePersistence.h"
#include "platform/logging/LogLine.h"
#include "service/Marnock.h"

namespace KT {

struct RequestTexts {
  const char* received;
  const char* payloadMissing;
  const char* requestParcelMissing;
  const char* replyParcelMissing;
  const char* postFailed;
};

// `apply` runs the store operation and fills the response; `logResult` writes the result line.
template <class RequestType, class ResponseType>
struct RequestRow {
  using Request = RequestType;
  using Response = ResponseType;

  RequestCode code;
  void (Marnock::*handler)(TagIPCMessageItem&);
  const char* function;
  RequestTexts texts;
  int replyCapacityBytes;
  void (*apply)(DevicePersistence& store, const Request& request, Response& response);
  void (*logResult)(const char* function, const Request& request, const Response& response);
};

// The four forms of the result line.
template <class Request, class Response>
void LogPeerResult(const char* function, const Request& request, const Response& response) {
  platform::LogProgress(function, "[KTData] udId:", request.udId, ", result:", response.result);
}

inline void LogPeerRead(const char* function, const PeerSumGetRequest& request, const PeerSumGetResponse& response) {
  platform::LogProgress(function, "[KTData] udId:", request.udId, ", sumId:", response.sumId,
                        ", result:", response.result);
}

inline constexpr RequestRow<PeerSumSetRequest, PeerSumSetResponse> kSetPeerDeviceRow{
    kSetPeerDevice,
    &Marnock::SetPeerDevice,
    "KT::Marnock::SetPeerDevice",
    {"[KTData] Received the request event of setting peer device.", "[KTData] Set peer device message is null.",
     "[KTData] Deserialize peer device make shared failed.", "[KTData] Serialize peer device make shared failed.",
     "[KTData] Set peer device ipc msg failed."},
    kReplyCapacityBytes,
    [](DevicePersistence& store, const PeerSumSetRequest& request, PeerSumSetResponse& response) {
      response.result = store.SetPeerDevice(request.udId, request.sumId);
    },
    &LogPeerResult};

inline constexpr RequestRow<PeerSumGetRequest, PeerSumGetResponse> kGetPeerDeviceRow{
    kGetPeerDevice,
    &Marnock::GetPeerDevice,
    "KT::Marnock::GetPeerDevice",
    {"[KTData] Received the request event of getting peer device.", "[KTData] Get peer device message is null.",
     "[KTData] Deserialize peer device make shared failed.", "[KTData] Serialize peer device make shared failed.",
     "[KTData] Get peer device ipc msg failed."},
    kReplyCapacityBytes,
    [](DevicePersistence& store, const PeerSumGetRequest& request, PeerSumGetResponse& response) {
      response.result = store.GetPeerDevice(request.udId, response.sumId);
    },
    &LogPeerRead};

inline constexpr RequestRow<PeerSumDeleteRequest, PeerSumDeleteResponse> kDeletePeerDeviceRow{
    kDeletePeerDevice,
    &Marnock::DeletePeerDevice,
    "KT::Marnock::DeletePeerDevice",
    {"[KTData] Received the request event of deleting peer device.", "[KTData] Delete peer device message is null.",
     "[KTData] Deserialize peer device make shared failed.", "[KTData] Serialize peer device make shared failed.",
     "[KTData] Delete peer device ipc msg failed."},
    kReplyCapacityBytes,
    [](DevicePersistence& store, const PeerSumDeleteRequest& request, PeerSumDeleteResponse& response) {
      response.result = store.DeletePeerDevice(request.udId);
    },
    &LogPeerResult};

// In the order in which they are registered.
inline constexpr auto kRequestTable = std::tuple(kSetPeerDeviceRow, kGetPeerDeviceRow, kDeletePeerDeviceRow);

}  // namespace KT
