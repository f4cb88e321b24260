// The eleven requests, a row each: what a handler decodes, does, logs and answers. Adding a request is adding a row
// here and its one-line member to KT::Marnock.
#pragma once

#include <tuple>

#include "codec/Protocol.h"
#include "codec/messages/CurrZentapMessages.h"
#include "codec/messages/PeerSumMessages.h"
#include "codec/messages/TrustedZentapMessages.h"
#include "persistence/DevicePersistence.h"
#include "service/Marnock.h"
#include "service/RequestOperations.h"

namespace KT {

// The texts of a failed request. Trusted and current devices share them; only the "received" text and the function name
// tell the two apart.
struct ActionTexts {
  const char* payloadMissing;
  const char* postFailed;
};
inline constexpr ActionTexts kSetDevice{"[KTData] Set zentap device message is null.",
                                        "[KTData] Set zentap device ipc msg failed."};
inline constexpr ActionTexts kDeleteDevice{"[KTData] Delete zentap device message is null.",
                                           "[KTData] Delete zentap device ipc msg failed."};
inline constexpr ActionTexts kGetDevice{"[KTData] Zentap device message is null.",
                                        "[KTData] Get zentap device ipc msg failed."};
inline constexpr ActionTexts kGetDeviceList{"[KTData] Zentap device list message is null.",
                                            "[KTData] Get zentap device list ipc msg failed."};
inline constexpr ActionTexts kSetPeer{"[KTData] Set peer device message is null.",
                                      "[KTData] Set peer device ipc msg failed."};
inline constexpr ActionTexts kDeletePeer{"[KTData] Delete peer device message is null.",
                                         "[KTData] Delete peer device ipc msg failed."};
inline constexpr ActionTexts kGetPeer{"[KTData] Get peer device message is null.",
                                      "[KTData] Get peer device ipc msg failed."};

struct ParcelTexts {
  const char* requestMissing;
  const char* replyMissing;
};
inline constexpr ParcelTexts kDeviceParcels{"[KTData] Deserialize zentap device make shared failed.",
                                            "[KTData] Serialize zentap device make shared failed."};
inline constexpr ParcelTexts kDeviceListParcels{"[KTData] Deserialize zentap device list make shared failed.",
                                                "[KTData] Serialize zentap device list make shared failed."};
inline constexpr ParcelTexts kPeerParcels{"[KTData] Deserialize peer device make shared failed.",
                                          "[KTData] Serialize peer device make shared failed."};

// `apply` runs the store operation and fills the response; `logResult` writes the result line.
template <class RequestType>
struct RequestRow {
  using Request = RequestType;
  using Response = typename RequestType::Response;

  const char* function;
  void (Marnock::*handler)(TagIPCMessageItem&);
  const char* received;
  ActionTexts action;
  ParcelTexts parcels;
  int replyCapacityBytes;
  void (*apply)(DevicePersistence& store, const Request& request, Response& response);
  void (*logResult)(const char* function, const Request& request, const Response& response);

  static constexpr int Code() { return Request::kCode; }
};

using Store = DevicePersistence;

inline constexpr RequestRow<TrustedZentapDeviceSetRequest> kSetTrusted{
    "KT::Marnock::SetTrustedZentapDeviceInfo",
    &Marnock::SetTrustedZentapDeviceInfo,
    "[KTData] Received the request event of setting zentap device.",
    kSetDevice,
    kDeviceParcels,
    kReplyCapacityBytes,
    &SetDevice<&Store::SetTrustedZentapDeviceInfo>,
    &LogDeviceResult};

inline constexpr RequestRow<TrustedZentapDeviceGetRequest> kGetTrusted{
    "KT::Marnock::GetTrustedZentapDeviceInfo",
    &Marnock::GetTrustedZentapDeviceInfo,
    "[KTData] Received the request event of getting zentap device.",
    kGetDevice,
    kDeviceParcels,
    kReplyCapacityBytes,
    &GetDevice<&Store::GetTrustedZentapDeviceInfo>,
    &LogDeviceResult};

inline constexpr RequestRow<TrustedZentapDeviceGetListRequest> kGetTrustedList{
    "KT::Marnock::GetTrustedZentapDeviceInfoList",
    &Marnock::GetTrustedZentapDeviceInfoList,
    "[KTData] Received the request event of getting zentap device list.",
    kGetDeviceList,
    kDeviceListParcels,
    kTrustedListReplyCapacityBytes,
    &GetDeviceList<&Store::GetTrustedZentapDeviceInfoList>,
    &LogListResult};

inline constexpr RequestRow<TrustedZentapDeviceDeleteRequest> kDeleteTrusted{
    "KT::Marnock::DeleteTrustedZentapDeviceInfo",
    &Marnock::DeleteTrustedZentapDeviceInfo,
    "[KTData] Received the request event of deleting zentap device.",
    kDeleteDevice,
    kDeviceParcels,
    kReplyCapacityBytes,
    &DeleteDevice<&Store::DeleteTrustedZentapDeviceInfo>,
    &LogDeviceResult};

inline constexpr RequestRow<CurrZentapDeviceSetRequest> kSetCurrent{
    "KT::Marnock::SetCurrZentapDeviceInfo",
    &Marnock::SetCurrZentapDeviceInfo,
    "[KTData] Received the request event of setting curr zentap device.",
    kSetDevice,
    kDeviceParcels,
    kReplyCapacityBytes,
    &SetDevice<&Store::SetCurrZentapDeviceInfo>,
    &LogDeviceResult};

inline constexpr RequestRow<CurrZentapDeviceGetRequest> kGetCurrent{
    "KT::Marnock::GetCurrZentapDeviceInfo",
    &Marnock::GetCurrZentapDeviceInfo,
    "[KTData] Received the request event of getting curr zentap device.",
    kGetDevice,
    kDeviceParcels,
    kReplyCapacityBytes,
    &GetDevice<&Store::GetCurrZentapDeviceInfo>,
    &LogDeviceResult};

inline constexpr RequestRow<CurrZentapDeviceGetListRequest> kGetCurrentList{
    "KT::Marnock::GetCurrZentapDeviceInfoList",
    &Marnock::GetCurrZentapDeviceInfoList,
    "[KTData] Received the request event of getting curr zentap device list.",
    kGetDeviceList,
    kDeviceListParcels,
    kCurrentListReplyCapacityBytes,
    &GetDeviceList<&Store::GetCurrZentapDeviceInfoList>,
    &LogListResult};

inline constexpr RequestRow<CurrZentapDeviceDeleteRequest> kDeleteCurrent{
    "KT::Marnock::DeleteCurrZentapDeviceInfo",
    &Marnock::DeleteCurrZentapDeviceInfo,
    "[KTData] Received the request event of deleting curr zentap device.",
    kDeleteDevice,
    kDeviceParcels,
    kReplyCapacityBytes,
    &DeleteDevice<&Store::DeleteCurrZentapDeviceInfo>,
    &LogDeviceResult};

inline constexpr RequestRow<PeerSumSetRequest> kSetPeerDevice{
    "KT::Marnock::SetPeerDevice",
    &Marnock::SetPeerDevice,
    "[KTData] Received the request event of setting peer device.",
    kSetPeer,
    kPeerParcels,
    kReplyCapacityBytes,
    &SetPeer,
    &LogPeerResult};

inline constexpr RequestRow<PeerSumGetRequest> kGetPeerDevice{
    "KT::Marnock::GetPeerDevice",
    &Marnock::GetPeerDevice,
    "[KTData] Received the request event of getting peer device.",
    kGetPeer,
    kPeerParcels,
    kReplyCapacityBytes,
    &GetPeer,
    &LogPeerRead};

inline constexpr RequestRow<PeerSumDeleteRequest> kDeletePeerDevice{
    "KT::Marnock::DeletePeerDevice",
    &Marnock::DeletePeerDevice,
    "[KTData] Received the request event of deleting peer device.",
    kDeletePeer,
    kPeerParcels,
    kReplyCapacityBytes,
    &DeletePeer,
    &LogPeerResult};

// In the order of their codes, which is the order of registration.
inline constexpr auto kRequestTable =
    std::tuple(kSetTrusted, kGetTrusted, kGetTrustedList, kDeleteTrusted, kSetCurrent, kGetCurrent, kGetCurrentList,
               kDeleteCurrent, kSetPeerDevice, kGetPeerDevice, kDeletePeerDevice);

}  // namespace KT
