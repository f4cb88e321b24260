// How much memory reading takes, whatever a payload or a frame announces.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>

#include "codec/messages/CurrZentapMessages.h"
#include "codec/messages/PeerSumMessages.h"
#include "codec/messages/TrustedZentapMessages.h"
#include "platform/ipc/FrameReader.h"
#include "tests/codec/PayloadBytes.h"
#include "tests/support/AllocationRecord.h"

namespace {

using codec_tests::Bytes;

// As the handlers and the clients read it: parcel and message together.
template <class Message>
std::size_t PeakOfReading(Bytes payload) {
  const support::AllocationRecord record;
  codec_tests::Decoded<Message>(std::move(payload));
  return record.PeakBytes();
}

Bytes Repeated(const Bytes& pattern, std::size_t size) {
  Bytes bytes(size);
  for (std::size_t i = 0; i < size; ++i) bytes[i] = pattern[i % pattern.size()];
  return bytes;
}

// Payloads that announce far more than they hold: the longest string everywhere, the largest count, both in turn, and
// bytes at random; from one byte to the largest payload.
std::vector<Bytes> HostilePayloads() {
  std::vector<Bytes> payloads{codec_tests::Hex("0000 ffffff7f"), codec_tests::Hex("0000 00000000 ffffff7f"),
                              codec_tests::Hex("0000 ffffff7f 00000000"), codec_tests::Hex("ff7f ffffff7f")};
  for (const std::size_t size : {1U, 2U, 3U, 4U, 8U, 16U, 32U, 64U, 100U, 1'000U, 10'240U}) {
    payloads.push_back(Repeated(codec_tests::Hex("ff7f"), size));
    payloads.push_back(Repeated(codec_tests::Hex("ffffff7f"), size));
    payloads.push_back(Repeated(codec_tests::Hex("0000 ffffff7f ff7f"), size));
  }
  // An empty pkgName, the count, and then nothing but the longest strings.
  Bytes list = codec_tests::Hex("0000 ffffff7f");
  list.resize(KT::kMaxPayloadBytes, 0x7F);
  payloads.push_back(list);
  std::mt19937 random(1);
  for (int i = 0; i < 200; ++i) {
    Bytes bytes(1 + random() % KT::kMaxPayloadBytes);
    std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<std::uint8_t>(random()); });
    payloads.push_back(std::move(bytes));
  }
  return payloads;
}

template <class Message>
class DecodeMemory : public testing::Test {
 protected:
  static constexpr std::size_t kBound = requires(Message message) { message.list; }
  ? KT::kMostListMemoryBytes : KT::kMostMessageMemoryBytes;
};

using namespace KT;
using EveryMessage =
    testing::Types<TrustedZentapDeviceSetRequest, TrustedZentapDeviceGetRequest, TrustedZentapDeviceGetListRequest,
                   TrustedZentapDeviceDeleteRequest, CurrZentapDeviceSetRequest, CurrZentapDeviceGetRequest,
                   CurrZentapDeviceGetListRequest, CurrZentapDeviceDeleteRequest, PeerSumSetRequest, PeerSumGetRequest,
                   PeerSumDeleteRequest, TrustedZentapDeviceSetResponse, TrustedZentapDeviceGetResponse,
                   TrustedZentapDeviceGetListResponse, TrustedZentapDeviceDeleteResponse, CurrZentapDeviceSetResponse,
                   CurrZentapDeviceGetResponse, CurrZentapDeviceGetListResponse, CurrZentapDeviceDeleteResponse,
                   PeerSumSetResponse, PeerSumGetResponse, PeerSumDeleteResponse>;
TYPED_TEST_SUITE(DecodeMemory, EveryMessage);

TYPED_TEST(DecodeMemory, IsBoundedWhateverThePayloadAnnounces) {
  std::size_t peak = 0;
  for (const Bytes& payload : HostilePayloads()) {
    peak = std::max(peak, PeakOfReading<TypeParam>(payload));
    ASSERT_LE(peak, this->kBound) << payload.size() << " bytes";
  }
  EXPECT_GT(peak, 0U) << "nothing was recorded";
  this->RecordProperty("peakBytes", static_cast<int>(peak));
}

TEST(FrameMemory, IsOneFrameBesideTheReadBufferWhateverALengthAnnounces) {
  using platform::ipc::FrameReader;
  constexpr std::size_t kBound = platform::ipc::kReadBufferBytes + platform::ipc::kMaxFrameBytes + 1024;
  for (const std::uint32_t length : {0U, 30U, 31U, 16'384U, 65'536U, 65'537U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
    const support::AllocationRecord record;
    FrameReader reader;
    bool isIncomplete = true;
    for (int i = 0; i < 4; ++i) {
      reader.Space()[0] = static_cast<char>(length >> (8 * i));
      reader.Commit(1);
      isIncomplete = reader.Next().state == platform::ipc::FrameState::Incomplete;
    }
    if (isIncomplete) {
      EXPECT_FALSE(reader.Space().empty());
    }
    EXPECT_LE(record.PeakBytes(), kBound) << length;
    EXPECT_GE(record.PeakBytes(), platform::ipc::kReadBufferBytes);
  }
}

}  // namespace
