// Any bytes as the payload of each message: decoding must stay within them, and what was decoded must survive being
// encoded and decoded again.
#include <array>
#include <memory>

#include "codec/PayloadLimits.h"
#include "codec/messages/CurrZentapMessages.h"
#include "codec/messages/EncodedSize.h"
#include "codec/messages/PeerSumMessages.h"
#include "codec/messages/TrustedZentapMessages.h"
#include "fuzz/FuzzInput.h"

namespace {

using fuzz::Require;

template <class Message>
Message Decoded(std::uint8_t* bytes, std::size_t size) {
  Message message;
  message.Deserialize(std::make_shared<KT::MessageParcel>(static_cast<std::uint32_t>(size), bytes, false));
  return message;
}

// A list response that announces more records than a payload can hold has fewer, and so does not survive.
template <class Message>
bool IsWhole(const Message& message) {
  if constexpr (requires { message.count; }) {
    return message.count <= 0 || static_cast<std::size_t>(message.count) == message.list.size();
  } else {
    return true;
  }
}

template <class Message>
void CheckMessage(std::vector<std::uint8_t> payload) {
  auto message = Decoded<Message>(payload.data(), payload.size());
  const std::size_t size = KT::EncodedSize(message);
  if (!IsWhole(message) || size == 0 || size > static_cast<std::size_t>(KT::kMaxPayloadBytes)) return;

  const auto parcel = std::make_shared<KT::MessageParcel>(static_cast<std::uint32_t>(size), nullptr, true);
  message.Serialize(parcel);
  Require(parcel->GetDataSize() == static_cast<std::int32_t>(size));
  Require(Decoded<Message>(parcel->GetBuffer(), size) == message);
}

template <class... Request>
constexpr auto ChecksFor() {
  return std::array{&CheckMessage<Request>..., &CheckMessage<typename Request::Response>...};
}

constexpr auto kChecks = ChecksFor<KT::TrustedZentapDeviceSetRequest, KT::TrustedZentapDeviceGetRequest,
                                   KT::TrustedZentapDeviceGetListRequest, KT::TrustedZentapDeviceDeleteRequest,
                                   KT::CurrZentapDeviceSetRequest, KT::CurrZentapDeviceGetRequest,
                                   KT::CurrZentapDeviceGetListRequest, KT::CurrZentapDeviceDeleteRequest,
                                   KT::PeerSumSetRequest, KT::PeerSumGetRequest, KT::PeerSumDeleteRequest>();
static_assert(kChecks.size() == 22);

}  // namespace

// Input: which message, then its payload.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  fuzz::FuzzInput input(data, size);
  const std::size_t which = input.Take<std::uint8_t>() % kChecks.size();
  kChecks[which](input.TakeBytes(static_cast<std::size_t>(KT::kMaxPayloadBytes)));
  return 0;
}
