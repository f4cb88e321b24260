#include "tests/faults/RequestCases.h"

#include <algorithm>
#include <memory>

#include "codec/MessageParcel.h"
#include "codec/messages/CurrZentapMessages.h"
#include "codec/messages/EncodedSize.h"
#include "codec/messages/PeerSumMessages.h"
#include "codec/messages/TrustedZentapMessages.h"
#include "tests/faults/Tables.h"

namespace faults {

namespace {

template <class Request>
Request RequestFor(const std::string& value) {
  Request request;
  if constexpr (requires { request.pkgName; }) request.pkgName = "a package whose name takes memory";
  if constexpr (requires { request.info; }) request.info.devName = value;
  if constexpr (requires { request.udId; }) {
    request.udId = kCaseKey;
    if constexpr (requires { request.sumId; }) request.sumId = value;
  } else if constexpr (requires { request.sumId; }) {
    request.sumId = kCaseKey;
  }
  return request;
}

template <class Request>
std::string PayloadOf(const std::string& value) {
  Request request = RequestFor<Request>(value);
  const auto size = static_cast<std::uint32_t>(KT::EncodedSize(request));
  const auto parcel = std::make_shared<KT::MessageParcel>(size, nullptr, true);
  request.Serialize(parcel);
  return {reinterpret_cast<const char*>(parcel->GetBuffer()), size};
}

template <class Request>
typename Request::Response Decoded(std::string reply) {
  typename Request::Response response;
  response.Deserialize(std::make_shared<KT::MessageParcel>(static_cast<std::uint32_t>(reply.size()),
                                                           reinterpret_cast<std::uint8_t*>(reply.data()), false));
  return response;
}

template <class Request>
int ResultOf(const std::string& reply) {
  return Decoded<Request>(reply).result;
}

template <class Request>
std::string ValueOf(const std::string& reply) {
  const auto response = Decoded<Request>(reply);
  if constexpr (requires { response.list; }) {
    return response.list.empty() ? "" : response.list.back().devName;
  } else if constexpr (requires { response.info; }) {
    return response.info.devName;
  } else if constexpr (requires { response.sumId; }) {
    return response.sumId;
  } else {
    return "";
  }
}

// What the requests about one table have in common.
struct TableOfCases {
  const char* file;
  const char* rows;
  int setCode;
  int getCode;
};
constexpr TableOfCases kTrusted{TrustedTable::kFile,
                                "SELECT devName FROM trustedZentapDeviceInfo WHERE sumId = 'key' ORDER BY id", 0xc40001,
                                0xc40002};
constexpr TableOfCases kCurrent{CurrentTable::kFile,
                                "SELECT devName FROM currZentapDeviceInfo WHERE sumId = 'key' ORDER BY id", 0xc40005,
                                0xc40006};
constexpr TableOfCases kPeers{PeerTable::kFile, "SELECT sumId FROM PEER_DEVICE WHERE udId = 'key' ORDER BY id",
                              0xc40009, 0xc4000a};

template <class Request>
RequestCase CaseOf(const char* name, Purpose purpose, int failureResult, const char* failure,
                   const TableOfCases& table) {
  return {name,
          Request::kCode,
          purpose,
          failureResult,
          failure,
          table.file,
          table.rows,
          &PayloadOf<Request>,
          &ResultOf<Request>,
          &ValueOf<Request>,
          table.setCode,
          table.getCode};
}

}  // namespace

const std::vector<RequestCase>& RequestCases() {
  static const std::vector<RequestCase> cases{
      CaseOf<KT::TrustedZentapDeviceSetRequest>("SetTrustedZentapDeviceInfo", Purpose::Set, -4999,
                                                "[KTData] Set zentap device info failed.", kTrusted),
      CaseOf<KT::TrustedZentapDeviceGetRequest>("GetTrustedZentapDeviceInfo", Purpose::Get, -4996,
                                                "[KTData] Get zentap device info failed.", kTrusted),
      CaseOf<KT::TrustedZentapDeviceGetListRequest>("GetTrustedZentapDeviceInfoList", Purpose::List, -4996,
                                                    "[KTData] Get zentap device list info failed.", kTrusted),
      CaseOf<KT::TrustedZentapDeviceDeleteRequest>("DeleteTrustedZentapDeviceInfo", Purpose::Delete, -4999,
                                                   "[KTData] Delete zentap device info failed.", kTrusted),
      CaseOf<KT::CurrZentapDeviceSetRequest>("SetCurrZentapDeviceInfo", Purpose::Set, -4999,
                                             "[KTData] Set curr zentap device info failed.", kCurrent),
      CaseOf<KT::CurrZentapDeviceGetRequest>("GetCurrZentapDeviceInfo", Purpose::Get, -4996,
                                             "[KTData] Get curr zentap device info failed.", kCurrent),
      CaseOf<KT::CurrZentapDeviceGetListRequest>("GetCurrZentapDeviceInfoList", Purpose::List, -4996,
                                                 "[KTData] Get curr zentap device list info failed.", kCurrent),
      CaseOf<KT::CurrZentapDeviceDeleteRequest>("DeleteCurrZentapDeviceInfo", Purpose::Delete, -4999,
                                                "[KTData] Delete curr zentap device info failed.", kCurrent),
      CaseOf<KT::PeerSumSetRequest>("SetPeerDevice", Purpose::Set, -4996, "[KTData] Set peer device info failed.",
                                    kPeers),
      CaseOf<KT::PeerSumGetRequest>("GetPeerDevice", Purpose::Get, -4996, "[KTData] Get peer device failed.", kPeers),
      CaseOf<KT::PeerSumDeleteRequest>("DeletePeerDevice", Purpose::Delete, -4996,
                                       "[KTData] Delete peer device info failed.", kPeers),
  };
  return cases;
}

const RequestCase& RequestCaseOf(int code) {
  return *std::find_if(RequestCases().begin(), RequestCases().end(),
                       [code](const RequestCase& request) { return request.code == code; });
}

}  // namespace faults
