#include "client/RegistryClient.h"

#include <memory>
#include <utility>

#include "codec/MessageParcel.h"
#include "codec/PayloadLimits.h"
#include "codec/messages/EncodedSize.h"
#include "platform/ipc/Limits.h"

namespace KT {

namespace {

std::string Encode(IpcRequest& message, std::size_t size) {
  const auto parcel = std::make_shared<MessageParcel>(static_cast<std::uint32_t>(size), nullptr, true);
  message.Serialize(parcel);
  return {reinterpret_cast<const char*>(parcel->GetBuffer()), size};
}

// Decodes `payload` into `message`; false when the message does not take up exactly those bytes.
template <class Message>
bool Decode(std::string& payload, Message& message) {
  const auto parcel = std::make_shared<MessageParcel>(static_cast<std::uint32_t>(payload.size()),
                                                      reinterpret_cast<std::uint8_t*>(payload.data()), false);
  message.Deserialize(parcel);
  return EncodedSize(message) == payload.size();
}

}  // namespace

RegistryClient::RegistryClient(const RegistryClientOptions& options)
    : pkgName_(options.pkgName), timeout_(options.timeout), exchange_(options.pipeName, options.waitForService) {}

template <class Request>
CallOutcome<typename Request::Response> RegistryClient::Call(Request request) {
  CallOutcome<typename Request::Response> outcome;
  const std::size_t size = EncodedSize(request);
  if (size > static_cast<std::size_t>(kMaxPayloadBytes)) {
    outcome.status = CallStatus::RequestTooLarge;
    outcome.explanation = "the request takes " + std::to_string(size) + " bytes; the service decodes at most " +
                          std::to_string(kMaxPayloadBytes);
    return outcome;
  }
  RequestExchange::Answer answer = exchange_.Run(kServiceClientId, Request::kCode, Encode(request, size), timeout_);
  outcome.status = answer.status;
  outcome.ipcStatus = answer.ipcStatus;
  outcome.explanation = std::move(answer.explanation);
  if (answer.status == CallStatus::Answered && !Decode(answer.payload, outcome.response)) {
    outcome.status = CallStatus::UnreadableAnswer;
    outcome.explanation = "the answer of " + std::to_string(answer.payload.size()) +
                          " bytes is not the message that belongs to this request";
  }
  return outcome;
}

template <class Request>
CallOutcome<typename Request::Response> RegistryClient::CallFor(const std::string& sumId, Request request) {
  request.pkgName = pkgName_;
  request.sumId = sumId;
  return Call(std::move(request));
}

CallOutcome<TrustedZentapDeviceSetResponse> RegistryClient::SetTrustedZentapDeviceInfo(
    const std::string& sumId, const BluetoothDeviceSummary& info) {
  TrustedZentapDeviceSetRequest request;
  request.info = info;
  return CallFor(sumId, std::move(request));
}

CallOutcome<CurrZentapDeviceSetResponse> RegistryClient::SetCurrZentapDeviceInfo(const std::string& sumId,
                                                                                 const CurrZentapDeviceInfo& info) {
  CurrZentapDeviceSetRequest request;
  request.info = info;
  return CallFor(sumId, std::move(request));
}

CallOutcome<TrustedZentapDeviceGetResponse> RegistryClient::GetTrustedZentapDeviceInfo(const std::string& sumId) {
  return CallFor<TrustedZentapDeviceGetRequest>(sumId);
}

CallOutcome<CurrZentapDeviceGetResponse> RegistryClient::GetCurrZentapDeviceInfo(const std::string& sumId) {
  return CallFor<CurrZentapDeviceGetRequest>(sumId);
}

CallOutcome<TrustedZentapDeviceGetListResponse> RegistryClient::GetTrustedZentapDeviceInfoList() {
  TrustedZentapDeviceGetListRequest request;
  request.pkgName = pkgName_;
  return Call(std::move(request));
}

CallOutcome<CurrZentapDeviceGetListResponse> RegistryClient::GetCurrZentapDeviceInfoList() {
  CurrZentapDeviceGetListRequest request;
  request.pkgName = pkgName_;
  return Call(std::move(request));
}

CallOutcome<TrustedZentapDeviceDeleteResponse> RegistryClient::DeleteTrustedZentapDeviceInfo(const std::string& sumId) {
  return CallFor<TrustedZentapDeviceDeleteRequest>(sumId);
}

CallOutcome<CurrZentapDeviceDeleteResponse> RegistryClient::DeleteCurrZentapDeviceInfo(const std::string& sumId) {
  return CallFor<CurrZentapDeviceDeleteRequest>(sumId);
}

CallOutcome<PeerSumSetResponse> RegistryClient::SetPeerDevice(const std::string& udId, const std::string& sumId) {
  PeerSumSetRequest request;
  request.udId = udId;
  request.sumId = sumId;
  return Call(std::move(request));
}

CallOutcome<PeerSumGetResponse> RegistryClient::GetPeerDevice(const std::string& udId) {
  PeerSumGetRequest request;
  request.udId = udId;
  return Call(std::move(request));
}

CallOutcome<PeerSumDeleteResponse> RegistryClient::DeletePeerDevice(const std::string& udId) {
  PeerSumDeleteRequest request;
  request.udId = udId;
  return Call(std::move(request));
}

CallOutcome<HostStatusResponse> RegistryClient::GetHostStatus() {
  CallOutcome<HostStatusResponse> outcome;
  RequestExchange::Answer answer = exchange_.Run(platform::ipc::kHubId, platform::ipc::kStatusCode, {}, timeout_);
  outcome.status = answer.status;
  outcome.ipcStatus = answer.ipcStatus;
  outcome.explanation = std::move(answer.explanation);
  outcome.response.document = std::move(answer.payload);
  return outcome;
}

}  // namespace KT
