#include <gtest/gtest.h>

#include <random>
#include <type_traits>

#include "codec/DeviceFieldVisitors.h"
#include "codec/messages/CurrZentapMessages.h"
#include "codec/messages/EncodedSize.h"
#include "codec/messages/TrustedZentapMessages.h"
#include "tests/codec/PayloadBytes.h"

namespace codec_tests {
namespace {

constexpr int kRecords = 100000;

// The same records on every run and every system: distributions of the standard library differ.
class RandomRecords {
 public:
  template <class Record>
  Record Next() {
    Record record;
    KT::ForEachField(record, [this]<class Value>(const char*, Value& value) {
      if constexpr (std::is_same_v<Value, std::string>) {
        value = Text();
      } else if constexpr (std::is_same_v<Value, bool>) {
        value = (engine_() & 1U) != 0;
      } else {
        value = static_cast<Value>(engine_());
      }
    });
    return record;
  }

 private:
  // Any bytes; mostly short, sometimes empty, now and then as long as a payload with ten of them can bear.
  std::string Text() {
    const std::uint64_t kind = engine_() % 100;
    const std::uint64_t length = kind < 20 ? 0 : kind < 99 ? engine_() % 40 : engine_() % 1000;
    return bytes_.substr(engine_() % (bytes_.size() - 1000), length);
  }

  std::string RandomBytes() {
    std::string bytes(1 << 16, '\0');
    for (char& byte : bytes) byte = static_cast<char>(engine_() & 0xFFU);
    return bytes;
  }

  std::mt19937_64 engine_{20261121};
  const std::string bytes_ = RandomBytes();
};

// Sends records through a message and hands what arrived to `expect(sent, received)`.
template <class Message, class Expect>
void SendRecords(Expect expect) {
  RandomRecords random;
  for (int i = 0; i < kRecords; ++i) {
    Message sent;
    sent.info = random.Next<decltype(sent.info)>();
    const std::size_t size = KT::EncodedSize(sent);
    const Bytes bytes = Encoded(sent, static_cast<std::uint32_t>(size));
    ASSERT_EQ(bytes.size(), size) << "record " << i;
    const auto received = Decoded<Message>(bytes);
    expect(sent.info, received.info);
    if (testing::Test::HasFatalFailure()) FAIL() << "record " << i;
  }
}

TEST(RoundTrip, KeepsEveryFieldOfAFullRecord) {
  SendRecords<KT::CurrZentapDeviceSetRequest>(
      [](const CurrZentapDeviceInfo& sent, const CurrZentapDeviceInfo& received) { ASSERT_EQ(sent, received); });
}

TEST(RoundTrip, KeepsEveryFieldOfATrustedRecord) {
  SendRecords<KT::TrustedZentapDeviceSetRequest>(
      [](const BluetoothDeviceSummary& sent, const BluetoothDeviceSummary& received) { ASSERT_EQ(sent, received); });
}

TEST(RoundTrip, KeepsAllButIsSupportPlenixOfACurrentRecordThatIsReadBack) {
  SendRecords<KT::CurrZentapDeviceGetResponse>([](CurrZentapDeviceInfo sent, const CurrZentapDeviceInfo& received) {
    sent.isSupportPlenix = false;
    ASSERT_EQ(sent, received);
  });
}

TEST(RoundTrip, KeepsTheOrderOfAList) {
  RandomRecords random;
  for (int i = 0; i < 1000; ++i) {
    KT::TrustedZentapDeviceGetListResponse sent;
    for (int record = 0; record < i % 21; ++record) {
      sent.list.push_back(random.Next<BluetoothDeviceSummary>());
      if (KT::EncodedSize(sent) > 8000) break;
      sent.count = static_cast<std::int32_t>(sent.list.size());
    }
    sent.list.resize(static_cast<std::size_t>(sent.count));
    sent.result = i;
    ASSERT_EQ(Decoded<KT::TrustedZentapDeviceGetListResponse>(Encoded(sent)), sent) << "list " << i;
  }
}

}  // namespace
}  // namespace codec_tests
