#include "service/Marnock.h"

#include <memory>
#include <new>

#include "codec/MessageParcel.h"
#include "codec/PayloadLimits.h"
#include "service/RequestTable.h"

namespace KT {

namespace {

// A parcel with its reference count in one allocation; null when there is no memory for it or for what it is made of. A
// parcel over too large a payload is no such case: it reads as an empty one.
std::shared_ptr<MessageParcel> MakeParcel(int size, char* payload, bool allocate) {
  try {
    auto parcel = std::make_shared<MessageParcel>(static_cast<std::uint32_t>(size),
                                                  reinterpret_cast<std::uint8_t*>(payload), allocate);
    return parcel->IsReady() || size > kMaxPayloadBytes ? parcel : nullptr;
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

}  // namespace

Marnock& Marnock::GetInstance() {
  static Marnock instance;
  return instance;
}

Marnock::Marnock() : IPCMessageClient(kServiceClientId, false, false, kPipeName) {}

Marnock::~Marnock() { UnRegisterMessageCallbackAll(); }

void Marnock::Init() {
  RegisterIpc();
  platform::LogProgress("KT::Marnock::Init", "[KTData] Init Marnock finished.");
}

void Marnock::RegisterIpc() {
  std::apply([this](const auto&... row) { (RegisterMessageCallback(row.Code(), this, row.handler), ...); },
             kRequestTable);
}

void Marnock::UnRegisterIpc() { UnRegisterMessageCallbackAll(); }

bool Marnock::PostIpc(int a, int b, int c, char* data, int len) {
  TagIPCMessageItem item;
  item.receiver = a;
  item.sender = -1;
  item.code = b;
  item.replyCode = c;
  item.session = -1;
  item.status = 0;
  item.length = len;
  item.payload = data;
  item.isLast = true;
  item.extra = 0;
  return PostIPCMessage(item);
}

template <class Row>
void Marnock::Handle(const Row& row, const TagIPCMessageItem& item) {
  CountedRequest counted(tallies_[TallyIndex(row.Code())]);
  platform::LogProgress(row.function, row.received);
  if (item.length <= 0 || item.payload == nullptr) {
    platform::LogFailure(row.function, row.action.payloadMissing);
    return;
  }
  const auto requestParcel = MakeParcel(item.length, item.payload, false);
  if (requestParcel == nullptr) {
    platform::LogFailure(row.function, row.parcels.requestMissing);
    return;
  }
  typename Row::Request request;
  request.Deserialize(requestParcel);

  typename Row::Response response;
  row.apply(store_, request, response);
  row.logResult(row.function, request, response);

  const auto replyParcel = MakeParcel(row.replyCapacityBytes, nullptr, true);
  if (replyParcel == nullptr) {
    platform::LogFailure(row.function, row.parcels.replyMissing);
    return;
  }
  response.Serialize(replyParcel);
  if (!PostIpc(item.sender, item.replyCode, -1, reinterpret_cast<char*>(replyParcel->GetBuffer()),
               replyParcel->GetDataSize())) {
    platform::LogFailure(row.function, row.action.postFailed);
    return;
  }
  counted.Answered(response.result);
}

void Marnock::SetTrustedZentapDeviceInfo(TagIPCMessageItem& item) { Handle(kSetTrusted, item); }
void Marnock::GetTrustedZentapDeviceInfo(TagIPCMessageItem& item) { Handle(kGetTrusted, item); }
void Marnock::GetTrustedZentapDeviceInfoList(TagIPCMessageItem& item) { Handle(kGetTrustedList, item); }
void Marnock::DeleteTrustedZentapDeviceInfo(TagIPCMessageItem& item) { Handle(kDeleteTrusted, item); }
void Marnock::SetCurrZentapDeviceInfo(TagIPCMessageItem& item) { Handle(kSetCurrent, item); }
void Marnock::GetCurrZentapDeviceInfo(TagIPCMessageItem& item) { Handle(kGetCurrent, item); }
void Marnock::GetCurrZentapDeviceInfoList(TagIPCMessageItem& item) { Handle(kGetCurrentList, item); }
void Marnock::DeleteCurrZentapDeviceInfo(TagIPCMessageItem& item) { Handle(kDeleteCurrent, item); }
void Marnock::SetPeerDevice(TagIPCMessageItem& item) { Handle(kSetPeerDevice, item); }
void Marnock::GetPeerDevice(TagIPCMessageItem& item) { Handle(kGetPeerDevice, item); }
void Marnock::DeletePeerDevice(TagIPCMessageItem& item) { Handle(kDeletePeerDevice, item); }

}  // namespace KT
