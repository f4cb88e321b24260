#include "bench/roundtrip/Exchange.h"

#include <cstdint>
#include <initializer_list>
#include <type_traits>

#include "bench/support/SampleDevices.h"
#include "codec/Protocol.h"
#include "codec/messages/PeerSumMessages.h"

namespace bench {

namespace {

// Ids that the hub may have granted to the client; any would do.
constexpr std::int32_t kClientId = 1;
constexpr std::int32_t kReplyCode = 1;

template <class Integer>
void Append(std::string& bytes, Integer value) {
  for (std::size_t i = 0; i < sizeof(value); ++i) {
    bytes += static_cast<char>(static_cast<std::make_unsigned_t<Integer>>(value) >> (8 * i) & 0xFF);
  }
}

void AppendText(std::string& bytes, const std::string& text) {
  Append(bytes, static_cast<std::uint16_t>(text.size()));
  bytes += text;
}

std::string Frame(std::int32_t receiver, std::int32_t sender, std::int32_t code, std::int32_t replyCode,
                  const std::string& payload) {
  std::string header;
  for (const std::int32_t field : {receiver, sender, code, replyCode, -1, 0}) Append(header, field);
  Append(header, std::uint8_t{1});   // isLast
  Append(header, std::int32_t{0});   // extra
  Append(header, std::uint16_t{0});  // no name
  std::string frame;
  Append(frame, static_cast<std::uint32_t>(header.size() + payload.size()));
  return frame + header + payload;
}

}  // namespace

std::string PeerUdId() { return SampleKey(1); }
std::string PeerSumId() { return SampleKey(2); }

std::string RequestFrame() {
  std::string payload;
  AppendText(payload, PeerUdId());
  return Frame(KT::kServiceClientId, kClientId, KT::PeerSumGetRequest::kCode, kReplyCode, payload);
}

std::string AnswerFrame() {
  std::string payload;
  AppendText(payload, PeerSumId());
  Append(payload, std::int32_t{KT::kResultSuccess});
  return Frame(kClientId, KT::kServiceClientId, kReplyCode, -1, payload);
}

}  // namespace bench
