#include <array>
#include <cstring>
#include <memory>
#include <stdexcept>

#include "bench/codec/CodecBenchmarks.h"
#include "bench/codec/PositionalCodec.h"
#include "bench/support/SampleDevices.h"
#include "codec/MessageParcel.h"
#include "codec/Protocol.h"
#include "codec/messages/CurrZentapMessages.h"
#include "codec/messages/TrustedZentapMessages.h"

namespace bench {

namespace {

using benchmark::State;
using Bytes = std::vector<std::uint8_t>;

// The largest parcel. The list of current devices is measured in it as well, although 20 records are more than the
// service's reply buffer for that list takes.
constexpr std::uint32_t kLargestParcel = KT::kTrustedListReplyCapacityBytes;
constexpr int kListLength = 20;

struct Aims {
  double encode;
  double decode;
};
constexpr Aims kRecordAims{5.0, 2.5};
constexpr Aims kListAims{3.5, 1.7};

std::shared_ptr<KT::MessageParcel> WritingParcel(std::uint32_t capacity) {
  return std::make_shared<KT::MessageParcel>(capacity, nullptr, true);
}

// The whole way of an answer: a parcel is made, filled, asked for its size and given up.
template <class Message>
void EncodeWithParcel(State& state, Message message, std::uint32_t capacity) {
  for (auto _ : state) {
    const auto parcel = WritingParcel(capacity);
    message.Serialize(parcel);
    benchmark::DoNotOptimize(parcel->GetDataSize());
    benchmark::DoNotOptimize(parcel->GetBuffer());
  }
}

template <class Message>
void DecodeWithParcel(State& state, Bytes bytes) {
  for (auto _ : state) {
    const auto parcel =
        std::make_shared<KT::MessageParcel>(static_cast<std::uint32_t>(bytes.size()), bytes.data(), false);
    Message message;
    message.Deserialize(parcel);
    benchmark::DoNotOptimize(&message);
    benchmark::ClobberMemory();
  }
}

template <class Plain>
void EncodeByHand(State& state, const Plain& message) {
  Bytes buffer(kLargestParcel);
  for (auto _ : state) {
    PositionalWriter writer(buffer.data(), buffer.size());
    Encode(message, writer);
    benchmark::DoNotOptimize(writer.Size());
    benchmark::ClobberMemory();
  }
}

template <class Plain>
void DecodeByHand(State& state, const Bytes& bytes) {
  for (auto _ : state) {
    PositionalReader reader(bytes.data(), bytes.size());
    Plain message;
    Decode(reader, message);
    benchmark::DoNotOptimize(&message);
    benchmark::ClobberMemory();
  }
}

void CopyBytes(State& state, const Bytes& bytes) {
  Bytes buffer(bytes.size());
  for (auto _ : state) {
    std::memcpy(buffer.data(), bytes.data(), bytes.size());
    benchmark::ClobberMemory();
  }
}

// The message's payload. Both codecs have to agree on it.
template <class Message, class Plain>
Bytes Payload(Message message, const Plain& plain) {
  const auto parcel = WritingParcel(kLargestParcel);
  message.Serialize(parcel);
  Bytes buffer(kLargestParcel);
  PositionalWriter writer(buffer.data(), buffer.size());
  Encode(plain, writer);
  buffer.resize(writer.Size());
  const std::int32_t size = parcel->GetDataSize();
  if (!writer.Fits() || size != static_cast<std::int32_t>(buffer.size()) ||
      std::memcmp(parcel->GetBuffer(), buffer.data(), buffer.size()) != 0) {
    throw std::logic_error("the two codecs differ");
  }
  return buffer;
}

template <class Message, class Plain>
void AddMessage(ComparisonSuite& suite, const std::string& what, const Message& message, const Plain& plain,
                std::uint32_t capacity, Aims aims) {
  const Bytes bytes = Payload(message, plain);
  const std::string label = what + ", " + std::to_string(bytes.size()) + " bytes";
  const Subject copy{"memcpy", [bytes](State& state) { CopyBytes(state, bytes); }, {}};
  suite.Add("encode " + label, {"parcel", [=](State& state) { EncodeWithParcel(state, message, capacity); }, {}},
            {{"by hand", [plain](State& state) { EncodeByHand(state, plain); }, aims.encode}, copy});
  suite.Add("decode " + label, {"parcel", [bytes](State& state) { DecodeWithParcel<Message>(state, bytes); }, {}},
            {{"by hand", [bytes](State& state) { DecodeByHand<Plain>(state, bytes); }, aims.decode}, copy});
}

constexpr char kPackage[] = "com.example.assistant";

void AddSetCurrent(ComparisonSuite& suite) {
  KT::CurrZentapDeviceSetRequest message;
  message.pkgName = kPackage;
  message.sumId = SampleKey(1);
  message.info = SampleDevice(1);
  AddMessage(suite, "32-field record", message, PlainSetCurrent{message.pkgName, message.sumId, message.info},
             KT::kReplyCapacityBytes, kRecordAims);
}

void AddGetCurrent(ComparisonSuite& suite) {
  KT::CurrZentapDeviceGetResponse message;
  message.pkgName = kPackage;
  message.info = SampleDevice(1);
  AddMessage(suite, "31-field record", message, PlainGetCurrent{message.pkgName, message.result, message.info},
             KT::kReplyCapacityBytes, kRecordAims);
}

void AddGetTrusted(ComparisonSuite& suite) {
  KT::TrustedZentapDeviceGetResponse message;
  message.pkgName = kPackage;
  message.info = SampleTrustedDevice(1);
  AddMessage(suite, "24-field record", message, PlainGetTrusted{message.pkgName, message.result, message.info},
             KT::kReplyCapacityBytes, kRecordAims);
}

template <class Message, class Plain, class Record>
void AddList(ComparisonSuite& suite, const std::string& what, Record (*sample)(int number)) {
  Message message;
  message.pkgName = kPackage;
  for (int i = 0; i < kListLength; ++i) message.list.push_back(sample(i));
  message.count = kListLength;
  AddMessage(suite, what, message, Plain{message.pkgName, message.count, message.list, message.result}, kLargestParcel,
             kListAims);
}

}  // namespace

void AddRecords(ComparisonSuite& suite) {
  AddSetCurrent(suite);
  AddGetCurrent(suite);
  AddGetTrusted(suite);
  AddList<KT::CurrZentapDeviceGetListResponse, PlainCurrentList>(suite, "list of 20 with 31 fields", SampleDevice);
  AddList<KT::TrustedZentapDeviceGetListResponse, PlainTrustedList>(suite, "list of 20 with 24 fields",
                                                                    SampleTrustedDevice);
}

}  // namespace bench
