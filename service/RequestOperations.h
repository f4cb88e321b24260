// What the rows of the request table are made of: running a store operation for a request, and the result lines.
#pragma once

#include <cstdint>

#include "codec/Protocol.h"
#include "codec/messages/PeerSumMessages.h"
#include "persistence/DevicePersistence.h"
#include "platform/logging/LogLine.h"

namespace KT {

// Most answers name the package that asked; those that only carry a result do not.
template <class Request, class Response>
void EchoPkgName(const Request& request, Response& response) {
  if constexpr (requires { response.pkgName; }) {
    response.pkgName = request.pkgName;
  }
}

template <auto storeOperation, class Request, class Response>
void SetDevice(DevicePersistence& store, const Request& request, Response& response) {
  EchoPkgName(request, response);
  response.result = (store.*storeOperation)(request.sumId, request.info);
}

template <auto storeOperation, class Request, class Response>
void GetDevice(DevicePersistence& store, const Request& request, Response& response) {
  EchoPkgName(request, response);
  response.result = (store.*storeOperation)(request.sumId, response.info);
}

template <auto storeOperation, class Request, class Response>
void GetDeviceList(DevicePersistence& store, const Request& request, Response& response) {
  EchoPkgName(request, response);
  response.result = (store.*storeOperation)(response.list);
  if (response.result != kResultSuccess) {
    response.list.clear();  // what was read before the failure is no list
  }
  response.count = static_cast<std::int32_t>(response.list.size());
}

template <auto storeOperation, class Request, class Response>
void DeleteDevice(DevicePersistence& store, const Request& request, Response& response) {
  response.result = (store.*storeOperation)(request.sumId);
}

inline void SetPeer(DevicePersistence& store, const PeerSumSetRequest& request, PeerSumSetResponse& response) {
  response.result = store.SetPeerDevice(request.udId, request.sumId);
}

inline void GetPeer(DevicePersistence& store, const PeerSumGetRequest& request, PeerSumGetResponse& response) {
  response.result = store.GetPeerDevice(request.udId, response.sumId);
}

inline void DeletePeer(DevicePersistence& store, const PeerSumDeleteRequest& request, PeerSumDeleteResponse& response) {
  response.result = store.DeletePeerDevice(request.udId);
}

// The four forms of the result line.
template <class Request, class Response>
void LogDeviceResult(const char* function, const Request& request, const Response& response) {
  platform::LogProgress(function, "[KTData] pkgName:", request.pkgName, ", sumId:", request.sumId,
                        ", result:", response.result);
}

template <class Request, class Response>
void LogListResult(const char* function, const Request& request, const Response& response) {
  platform::LogProgress(function, "[KTData] pkgName:", request.pkgName, ", result:", response.result);
}

template <class Request, class Response>
void LogPeerResult(const char* function, const Request& request, const Response& response) {
  platform::LogProgress(function, "[KTData] udId:", request.udId, ", result:", response.result);
}

inline void LogPeerRead(const char* function, const PeerSumGetRequest& request, const PeerSumGetResponse& response) {
  platform::LogProgress(function, "[KTData] udId:", request.udId, ", sumId:", response.sumId,
                        ", result:", response.result);
}

}  // namespace KT
