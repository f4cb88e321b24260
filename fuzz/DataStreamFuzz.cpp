// Any sequence of stream operations, through the interface, beside a plain model: results, values and bytes must agree.
#include <bit>
#include <type_traits>

#include "codec/DataStream.h"
#include "fuzz/FuzzInput.h"
#include "fuzz/StreamModel.h"

namespace {

using cohesa::IOStream;
using fuzz::FuzzInput;
using fuzz::Require;
using fuzz::StreamModel;

constexpr std::size_t kMostOperations = 64;
constexpr std::int32_t kMostStrings = 300;
constexpr std::int32_t kRefusedStrings = 25000;

bool Same(std::uint32_t result, std::int64_t expected) { return result == static_cast<std::uint32_t>(expected); }

template <class Value>
using Bits =
    std::conditional_t<sizeof(Value) == 8, std::uint64_t,
                       std::conditional_t<sizeof(Value) == 4, std::uint32_t,
                                          std::conditional_t<sizeof(Value) == 2, std::uint16_t, std::uint8_t>>>;

template <class Value>
void ReadByReference(IOStream& stream, StreamModel& model, std::uint32_t (IOStream::*read)(Value&)) {
  Value value{};
  std::uint64_t expected = 0;
  const std::int64_t result = model.ReadNumber(sizeof(Value), expected);
  Require(Same((stream.*read)(value), result));
  Require(std::bit_cast<Bits<Value>>(value) == static_cast<Bits<Value>>(expected));
}

template <class Value>
void ReadByValue(IOStream& stream, StreamModel& model, Value (IOStream::*read)()) {
  std::uint64_t expected = 0;
  model.ReadNumber(sizeof(Value), expected);
  Require(std::bit_cast<Bits<Value>>((stream.*read)()) == static_cast<Bits<Value>>(expected));
}

template <class Value>
void WriteValue(IOStream& stream, StreamModel& model, FuzzInput& input, std::uint32_t (IOStream::*write)(Value)) {
  const auto value = input.Take<Value>();
  Require(Same((stream.*write)(value), model.WriteNumber(sizeof(Value), std::bit_cast<Bits<Value>>(value))));
}

void ReadRaw(IOStream& stream, StreamModel& model, FuzzInput& input) {
  std::vector<std::uint8_t> bytes(input.Take<std::uint8_t>() + std::size_t{1});
  std::vector<std::uint8_t> expected(bytes.size());
  const std::int64_t result = model.ReadRaw(expected);
  Require(Same(stream.Read(bytes.data(), static_cast<std::uint32_t>(bytes.size())), result));
  Require(bytes == expected);
}

void WriteRaw(IOStream& stream, StreamModel& model, FuzzInput& input) {
  std::vector<std::uint8_t> bytes = input.TakeBytes(input.Take<std::uint8_t>());
  bytes.push_back(0);  // never null
  Require(Same(stream.Write(bytes.data(), static_cast<std::uint32_t>(bytes.size())), model.WriteRaw(bytes)));
}

void ReadString(IOStream& stream, StreamModel& model, bool byValue) {
  std::string expected;
  const std::int64_t result = model.ReadString(expected);
  std::string text;
  if (byValue) {
    text = stream.ReadUtf8String();
  } else {
    Require(Same(stream.ReadUtf8String(text), result));
  }
  Require(text == expected);
}

void WriteString(IOStream& stream, StreamModel& model, FuzzInput& input) {
  const std::string text = input.TakeText(input.Take<std::uint8_t>());
  Require(Same(stream.WriteUtf8String(text), model.WriteString(text)));
}

// An announced count of some thousands is obeyed, whatever is there: right, but it takes as long as a hundred other
// inputs. Counts past the limit are refused at once.
void ReadArray(IOStream& stream, StreamModel& model) {
  const std::int32_t count = model.PeekArrayCount();
  if (count > kMostStrings && count <= kRefusedStrings) return;
  std::vector<std::string> texts{"before"};
  std::vector<std::string> expected = texts;
  const std::int64_t result = model.ReadArray(expected);
  Require(Same(stream.ReadUtf8StringArray(texts), result));
  Require(texts == expected);
}

void WriteArray(IOStream& stream, StreamModel& model, FuzzInput& input) {
  std::vector<std::string> texts(input.Take<std::uint8_t>() % 8);
  for (std::string& text : texts) text = input.TakeText(input.Take<std::uint8_t>());
  Require(Same(stream.WriteUtf8StringArray(texts), model.WriteArray(texts)));
}

void ReadLine(IOStream& stream, StreamModel& model) {
  std::string line = "before";
  std::string expected;
  const std::int64_t result = model.ReadLine(expected);
  Require(Same(stream.ReadLine(line), result));
  Require(line == expected);
}

void WriteLine(IOStream& stream, StreamModel& model, FuzzInput& input) {
  const std::string line = input.TakeText(input.Take<std::uint8_t>());
  Require(Same(stream.WriteLine(line), model.WriteLine(line)));
}

void SetSwap(IOStream& stream, StreamModel& model, FuzzInput& input) {
  const bool swap = (input.Take<std::uint8_t>() & 1U) != 0;
  stream.SetSwapBytes(swap);
  model.SetSwap(swap);
  Require(stream.IsSwapBytes() == swap);
}

void RunOperation(IOStream& stream, StreamModel& model, FuzzInput& input) {
  switch (input.Take<std::uint8_t>() % 29) {
    case 0:
      return ReadRaw(stream, model, input);
    case 1:
      return ReadByValue<std::int32_t>(stream, model, &IOStream::ReadInt32);
    case 2:
      return ReadByReference<std::int32_t>(stream, model, &IOStream::ReadInt32);
    case 3:
      return ReadByValue<std::int16_t>(stream, model, &IOStream::ReadInt16);
    case 4:
      return ReadByReference<std::int16_t>(stream, model, &IOStream::ReadInt16);
    case 5:
      return ReadByValue<float>(stream, model, &IOStream::ReadFloat);
    case 6:
      return ReadByReference<float>(stream, model, &IOStream::ReadFloat);
    case 7:
      return ReadByValue<double>(stream, model, &IOStream::ReadDouble);
    case 8:
      return ReadByReference<double>(stream, model, &IOStream::ReadDouble);
    case 9:
      return ReadByValue<std::uint8_t>(stream, model, &IOStream::ReadInt8);
    case 10:
      return ReadByReference<std::uint8_t>(stream, model, &IOStream::ReadInt8);
    case 11:
      return ReadByValue<std::int64_t>(stream, model, &IOStream::ReadInt64);
    case 12:
      return ReadByReference<std::int64_t>(stream, model, &IOStream::ReadInt64);
    case 13:
      return ReadString(stream, model, true);
    case 14:
      return ReadString(stream, model, false);
    case 15:
      return ReadArray(stream, model);
    case 16:
      return ReadLine(stream, model);
    case 17:
      return WriteRaw(stream, model, input);
    case 18:
      return WriteValue<std::int32_t>(stream, model, input, &IOStream::WriteInt32);
    case 19:
      return WriteValue<std::int16_t>(stream, model, input, &IOStream::WriteInt16);
    case 20:
      return WriteValue<float>(stream, model, input, &IOStream::WriteFloat);
    case 21:
      return WriteValue<double>(stream, model, input, &IOStream::WriteDouble);
    case 22:
      return WriteValue<std::uint8_t>(stream, model, input, &IOStream::WriteInt8);
    case 23:
      return WriteValue<std::int64_t>(stream, model, input, &IOStream::WriteInt64);
    case 24:
      return WriteString(stream, model, input);
    case 25:
      return WriteArray(stream, model, input);
    case 26:
      return WriteLine(stream, model, input);
    case 27:
      return SetSwap(stream, model, input);
    default:
      return stream.Flush();
  }
}

}  // namespace

// Input: whether the stream reads; how many bytes it has; those bytes; then operations with their arguments.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzInput input(data, size);
  const bool reading = (input.Take<std::uint8_t>() & 1U) != 0;
  std::vector<std::uint8_t> bytes = input.TakeBytes(input.Take<std::uint16_t>() % 1024);
  bytes.push_back(0);  // never null
  StreamModel model(bytes, reading, false);
  cohesa::IpcBufferBuild channel(bytes.data(), static_cast<std::uint32_t>(bytes.size()), reading);
  cohesa::DataStream stream(&channel);
  for (std::size_t i = 0; i < kMostOperations && !input.Empty(); ++i) RunOperation(stream, model, input);
  Require(bytes == model.Bytes());
  return 0;
}
