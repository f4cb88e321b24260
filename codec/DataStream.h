// The stream of every message payload.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "codec/IOStream.h"
#include "codec/IpcBufferBuild.h"

namespace cohesa {

// Primitives are in the host's byte order (little-endian on every target), or reversed when swapBytes is set. A string
// is its length in bytes as 16 bits, then the bytes; a string array an int32 count, then the strings; a line its bytes,
// then a newline.
//
// Nothing is thrown for bad data, whose results are below where they are not obvious. One thread at a time.
//
// Lengths are not guarded: the length of a string is written truncated to 16 bits and read as signed, so a string of
// 32,768 bytes or more reads as empty and leaves its bytes unread.
class DataStream final : public IOStream {
 public:
  // `channel` is not owned and may be null: every read then gives its default, every write fails.
  explicit DataStream(IpcBufferBuild* channel);
  // A copy shares the channel (and so the cursor), but has a scratch buffer of its own, empty at first.
  DataStream(const DataStream& other);
  DataStream& operator=(const DataStream& other);
  ~DataStream() override;

  // Straight to the channel.
  std::uint32_t Read(std::uint8_t* dst, std::uint32_t n) override;
  std::uint32_t Write(const void* src, std::uint32_t n) override {
    return channel_ == nullptr ? kFailed : channel_->Write(src, n);
  }

  // `value` stays untouched without a channel and becomes zero when the read fails.
  std::uint32_t ReadInt32(std::int32_t& value) override { return ReadPrimitive(value); }
  std::uint32_t ReadInt16(std::int16_t& value) override { return ReadPrimitive(value); }
  std::uint32_t ReadFloat(float& value) override { return ReadPrimitive(value); }
  std::uint32_t ReadDouble(double& value) override { return ReadPrimitive(value); }
  std::uint32_t ReadInt8(std::uint8_t& value) override { return ReadPrimitive(value); }
  std::uint32_t ReadInt64(std::int64_t& value) override { return ReadPrimitive(value); }

  std::int32_t ReadInt32() override { return ReadOr<std::int32_t>(-1); }
  std::int16_t ReadInt16() override { return ReadOr<std::int16_t>(-1); }
  float ReadFloat() override { return ReadOr(0.0F); }
  double ReadDouble() override { return ReadOr(-1.0); }
  std::uint8_t ReadInt8() override { return ReadOr<std::uint8_t>(0); }
  std::int64_t ReadInt64() override { return ReadOr<std::int64_t>(-1); }

  std::uint32_t WriteInt32(std::int32_t value) override { return WritePrimitive(value); }
  std::uint32_t WriteInt16(std::int16_t value) override { return WritePrimitive(value); }
  std::uint32_t WriteFloat(float value) override { return WritePrimitive(value); }
  std::uint32_t WriteDouble(double value) override { return WritePrimitive(value); }
  std::uint32_t WriteInt8(std::uint8_t value) override { return WritePrimitive(value); }
  std::uint32_t WriteInt64(std::int64_t value) override { return WritePrimitive(value); }

  // Returns 0 for a length that is zero, negative or missing; otherwise 2 + the length. When the bytes run short it
  // returns 1, and `text` still gets the announced length: what earlier reads left in the scratch buffer, then zeros.
  std::uint32_t ReadUtf8String(std::string& text) override;
  std::string ReadUtf8String() override;
  // Returns 2 + the length, or 1 when the bytes did not fit; whether the length itself fitted does not count.
  std::uint32_t WriteUtf8String(const std::string& text) override {
    // Mostly length and bytes fit, and then they are one step of the cursor, which is what a message's writing waits
    // for.
    if (channel_ == nullptr || swapBytes_ || text.size() > kMostInOneStep) return WriteInTwoSteps(text);
    const auto total = static_cast<std::uint32_t>(text.size()) + kLengthPrefixBytes;
    std::uint8_t* const start = channel_->Claim(total);
    if (start == nullptr) return WriteInTwoSteps(text);
    const auto length = static_cast<std::uint16_t>(text.size());
    std::memcpy(start, &length, kLengthPrefixBytes);
    // memcpy: a loop over characters would not be made into one. The wire has no terminating zero.
    std::memcpy(start + kLengthPrefixBytes, text.data(), text.size());  // NOLINT(bugprone-not-null-terminated-result)
    return total;
  }

  // Appends to `texts`. A count of more than 25,000 is logged and returned as it is, with nothing more read.
  std::uint32_t ReadUtf8StringArray(std::vector<std::string>& texts) override;
  std::uint32_t WriteUtf8StringArray(const std::vector<std::string>& texts) override;

  // Ends at a newline, which is taken but not stored, or at the end of the bytes. Returns the length of `line`.
  std::uint32_t ReadLine(std::string& line) override;
  // Returns the length of `line` plus 1 whatever happened.
  std::uint32_t WriteLine(const std::string& line) override;

  // False when there was no memory for what strings are gathered in: they then read as empty.
  bool HasScratch() const { return scratch_ != nullptr; }

  bool IsSwapBytes() override { return swapBytes_; }
  void SetSwapBytes(bool swapBytes) override { swapBytes_ = swapBytes; }
  void Flush() override {}

 private:
  static constexpr std::uint32_t kLengthPrefixBytes = 2;
  static constexpr std::size_t kMostInOneStep = 0xFFFF;

  struct ScratchBlock;

  template <class Primitive>
  std::uint32_t ReadPrimitive(Primitive& value) {
    if (channel_ == nullptr) return kFailed;
    std::array<std::uint8_t, sizeof(Primitive)> bytes{};
    const std::uint32_t result = channel_->Read(bytes.data(), sizeof(Primitive));
    if (swapBytes_) std::reverse(bytes.begin(), bytes.end());
    value = std::bit_cast<Primitive>(bytes);
    return result;
  }

  template <class Primitive>
  Primitive ReadOr(Primitive fallback) {
    ReadPrimitive(fallback);
    return fallback;
  }

  template <class Primitive>
  std::uint32_t WritePrimitive(Primitive value) {
    if (channel_ == nullptr) return kFailed;
    auto bytes = std::bit_cast<std::array<std::uint8_t, sizeof(Primitive)>>(value);
    if (swapBytes_) std::reverse(bytes.begin(), bytes.end());
    return channel_->Write(bytes.data(), sizeof(Primitive));
  }

  std::uint32_t WriteInTwoSteps(const std::string& text);
  static std::unique_ptr<ScratchBlock> NewScratch();

  std::unique_ptr<ScratchBlock> scratch_;  // see HasScratch
  IpcBufferBuild* channel_;
  bool swapBytes_ = false;
};

}  // namespace cohesa
