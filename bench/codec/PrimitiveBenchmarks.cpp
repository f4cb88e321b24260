#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "bench/codec/CodecBenchmarks.h"
#include "codec/DataStream.h"

namespace bench {

namespace {

using benchmark::State;

// One pass writes or reads so many values, then starts over at the front of the buffer.
constexpr std::size_t kValues = 1000;

template <class Value>
struct Primitive;

template <>
struct Primitive<std::int32_t> {
  static std::uint32_t Write(cohesa::DataStream& stream, std::int32_t value) { return stream.WriteInt32(value); }
  static std::uint32_t Read(cohesa::DataStream& stream, std::int32_t& value) { return stream.ReadInt32(value); }
};

template <>
struct Primitive<std::int64_t> {
  static std::uint32_t Write(cohesa::DataStream& stream, std::int64_t value) { return stream.WriteInt64(value); }
  static std::uint32_t Read(cohesa::DataStream& stream, std::int64_t& value) { return stream.ReadInt64(value); }
};

template <class Value>
void WriteIntegers(State& state) {
  std::vector<std::uint8_t> buffer(kValues * sizeof(Value));
  for (auto _ : state) {
    cohesa::IpcBufferBuild channel(buffer.data(), static_cast<std::uint32_t>(buffer.size()), false);
    cohesa::DataStream stream(&channel);
    for (std::size_t i = 0; i < kValues; ++i) Primitive<Value>::Write(stream, static_cast<Value>(i));
    benchmark::ClobberMemory();
  }
}

template <class Value>
void ReadIntegers(State& state) {
  std::vector<std::uint8_t> buffer(kValues * sizeof(Value));
  for (auto _ : state) {
    cohesa::IpcBufferBuild channel(buffer.data(), static_cast<std::uint32_t>(buffer.size()), true);
    cohesa::DataStream stream(&channel);
    for (std::size_t i = 0; i < kValues; ++i) {
      Value value = 0;
      Primitive<Value>::Read(stream, value);
      benchmark::DoNotOptimize(value);
    }
  }
}

// Value by value, as the stream does it, but with nothing else.
template <class Value>
void CopyIntegersIn(State& state) {
  std::vector<std::uint8_t> buffer(kValues * sizeof(Value));
  for (auto _ : state) {
    for (std::size_t i = 0; i < kValues; ++i) {
      const auto value = static_cast<Value>(i);
      std::memcpy(buffer.data() + i * sizeof(Value), &value, sizeof(Value));
    }
    benchmark::ClobberMemory();
  }
}

template <class Value>
void CopyIntegersOut(State& state) {
  std::vector<std::uint8_t> buffer(kValues * sizeof(Value));
  for (auto _ : state) {
    for (std::size_t i = 0; i < kValues; ++i) {
      Value value = 0;
      std::memcpy(&value, buffer.data() + i * sizeof(Value), sizeof(Value));
      benchmark::DoNotOptimize(value);
    }
  }
}

constexpr std::size_t kPrefixBytes = 2;

std::vector<std::uint8_t> EncodedStrings(std::size_t length) {
  std::vector<std::uint8_t> bytes(kValues * (kPrefixBytes + length), 'x');
  for (std::size_t at = 0; at < bytes.size(); at += kPrefixBytes + length) {
    bytes[at] = static_cast<std::uint8_t>(length & 0xFF);
    bytes[at + 1] = static_cast<std::uint8_t>(length >> 8U);
  }
  return bytes;
}

void WriteStrings(State& state, std::size_t length) {
  std::vector<std::uint8_t> buffer(kValues * (kPrefixBytes + length));
  const std::string text(length, 'x');
  for (auto _ : state) {
    cohesa::IpcBufferBuild channel(buffer.data(), static_cast<std::uint32_t>(buffer.size()), false);
    cohesa::DataStream stream(&channel);
    for (std::size_t i = 0; i < kValues; ++i) stream.WriteUtf8String(text);
    benchmark::ClobberMemory();
  }
}

void ReadStrings(State& state, std::size_t length) {
  std::vector<std::uint8_t> buffer = EncodedStrings(length);
  for (auto _ : state) {
    cohesa::IpcBufferBuild channel(buffer.data(), static_cast<std::uint32_t>(buffer.size()), true);
    cohesa::DataStream stream(&channel);
    std::string text;
    for (std::size_t i = 0; i < kValues; ++i) {
      stream.ReadUtf8String(text);
      benchmark::DoNotOptimize(text.data());
    }
  }
}

void CopyStringsIn(State& state, std::size_t length) {
  std::vector<std::uint8_t> buffer(kValues * (kPrefixBytes + length));
  const std::string text(length, 'x');
  const auto prefix = static_cast<std::uint16_t>(length);
  for (auto _ : state) {
    std::uint8_t* cursor = buffer.data();
    for (std::size_t i = 0; i < kValues; ++i) {
      std::memcpy(cursor, &prefix, kPrefixBytes);
      std::memcpy(cursor + kPrefixBytes, text.data(), length);
      cursor += kPrefixBytes + length;
    }
    benchmark::ClobberMemory();
  }
}

void CopyStringsOut(State& state, std::size_t length) {
  const std::vector<std::uint8_t> buffer = EncodedStrings(length);
  std::string text(length, ' ');
  for (auto _ : state) {
    const std::uint8_t* cursor = buffer.data();
    for (std::size_t i = 0; i < kValues; ++i) {
      std::uint16_t prefix = 0;
      std::memcpy(&prefix, cursor, kPrefixBytes);
      std::memcpy(text.data(), cursor + kPrefixBytes, prefix);
      benchmark::DoNotOptimize(text.data());
      cursor += kPrefixBytes + length;
    }
  }
}

void AddStrings(ComparisonSuite& suite, std::size_t length) {
  const std::string what = "1000 strings of " + std::to_string(length) + " bytes";
  suite.Add("write " + what, {"stream", [length](State& state) { WriteStrings(state, length); }, {}},
            {{"memcpy", [length](State& state) { CopyStringsIn(state, length); }, {}}});
  suite.Add("read " + what, {"stream", [length](State& state) { ReadStrings(state, length); }, {}},
            {{"memcpy", [length](State& state) { CopyStringsOut(state, length); }, {}}});
}

}  // namespace

void AddPrimitives(ComparisonSuite& suite) {
  suite.Add("write 1000 int32", {"stream", WriteIntegers<std::int32_t>, {}},
            {{"memcpy", CopyIntegersIn<std::int32_t>, {}}});
  suite.Add("read 1000 int32", {"stream", ReadIntegers<std::int32_t>, {}},
            {{"memcpy", CopyIntegersOut<std::int32_t>, {}}});
  suite.Add("write 1000 int64", {"stream", WriteIntegers<std::int64_t>, {}},
            {{"memcpy", CopyIntegersIn<std::int64_t>, {}}});
  suite.Add("read 1000 int64", {"stream", ReadIntegers<std::int64_t>, {}},
            {{"memcpy", CopyIntegersOut<std::int64_t>, {}}});
  AddStrings(suite, 12);
  AddStrings(suite, 64);
  AddStrings(suite, 1000);
}

}  // namespace bench
