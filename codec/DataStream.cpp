#include "codec/DataStream.h"

#include <mutex>
#include <new>

#include "platform/logging/LogLine.h"

namespace cohesa {

namespace {

constexpr std::int32_t kMaxArrayStrings = 25000;
constexpr std::uint8_t kNewline = 10;

bool IsNegative(std::uint32_t result) { return static_cast<std::int32_t>(result) < 0; }

}  // namespace

// Where the bytes of a string are gathered before they become one. Kept between reads, so that a message allocates
// once, for its longest string; the mutex keeps two readers of one stream from mixing their bytes in it.
struct DataStream::ScratchBlock {
  std::vector<std::uint8_t> bytes;
  std::mutex mutex;
};

std::unique_ptr<DataStream::ScratchBlock> DataStream::NewScratch() {
  return std::unique_ptr<ScratchBlock>(new (std::nothrow) ScratchBlock);
}

DataStream::DataStream(IpcBufferBuild* channel) : scratch_(NewScratch()), channel_(channel) {}

DataStream::DataStream(const DataStream& other)
    : IOStream(other), scratch_(NewScratch()), channel_(other.channel_), swapBytes_(other.swapBytes_) {}

DataStream& DataStream::operator=(const DataStream& other) {
  if (this == &other) return *this;
  scratch_ = NewScratch();
  channel_ = other.channel_;
  swapBytes_ = other.swapBytes_;
  return *this;
}

DataStream::~DataStream() = default;

std::uint32_t DataStream::Read(std::uint8_t* dst, std::uint32_t n) {
  return channel_ == nullptr ? kFailed : channel_->Read(dst, n);
}

std::uint32_t DataStream::ReadUtf8String(std::string& text) {
  text.clear();
  const std::int16_t length = ReadInt16();
  if (length <= 0) return 0;
  if (scratch_ == nullptr || channel_ == nullptr) return kFailed;
  const auto size = static_cast<std::uint16_t>(length);

  const std::lock_guard lock(scratch_->mutex);
  std::vector<std::uint8_t>& bytes = scratch_->bytes;
  bytes.resize(size);
  const std::uint32_t result = channel_->Read(bytes.data(), size);
  text.assign(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  return result + kLengthPrefixBytes;
}

std::string DataStream::ReadUtf8String() {
  std::string text;
  ReadUtf8String(text);
  return text;
}

std::uint32_t DataStream::WriteInTwoSteps(const std::string& text) {
  WriteInt16(static_cast<std::int16_t>(text.size()));
  return Write(text.data(), static_cast<std::uint32_t>(text.size())) + kLengthPrefixBytes;
}

std::uint32_t DataStream::ReadUtf8StringArray(std::vector<std::string>& texts) {
  std::int32_t count = 0;
  std::uint32_t total = ReadInt32(count);
  if (count > kMaxArrayStrings) {
    platform::LogFailure("cohesa::DataStream::ReadUtf8StringArray", "readPrimitiveTypes int32_t :", count);
    return static_cast<std::uint32_t>(count);
  }
  for (std::int32_t i = 0; i < count; ++i) {
    std::string text;
    const std::uint32_t result = ReadUtf8String(text);
    if (IsNegative(result)) break;
    texts.push_back(std::move(text));
    total += result;
  }
  return total;
}

std::uint32_t DataStream::WriteUtf8StringArray(const std::vector<std::string>& texts) {
  std::uint32_t total = WriteInt32(static_cast<std::int32_t>(texts.size()));
  for (const std::string& text : texts) {
    const std::uint32_t result = WriteUtf8String(text);
    total += result;
    if (IsNegative(result)) break;
  }
  return total;
}

std::uint32_t DataStream::ReadLine(std::string& line) {
  line.clear();
  if (channel_ == nullptr || !channel_->HasBuffer()) return 0;
  std::uint8_t byte = 0;
  while (ReadInt8(byte) == sizeof(byte) && byte != kNewline) line.push_back(static_cast<char>(byte));
  return static_cast<std::uint32_t>(line.size());
}

std::uint32_t DataStream::WriteLine(const std::string& line) {
  Write(line.data(), static_cast<std::uint32_t>(line.size()));
  WriteInt8(kNewline);
  return static_cast<std::uint32_t>(line.size()) + 1;
}

}  // namespace cohesa
