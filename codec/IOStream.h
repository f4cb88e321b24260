// Typed reading and writing over a channel: no tags, no alignment, no terminators, so both sides must make the same
// calls in the same order.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace cohesa {

// Other modules call through the slots of this class: the order of the operations is part of the interface.
//
// Operations that return std::uint32_t report the bytes they account for, or kFailed. Reads that return a value give a
// fixed default where there is no channel, and zero (or an empty string) where the bytes have run out.
class IOStream {
 public:
  virtual ~IOStream() = default;

  virtual std::uint32_t Read(std::uint8_t* dst, std::uint32_t n) = 0;
  virtual std::int32_t ReadInt32() = 0;  // default -1
  virtual std::uint32_t ReadInt32(std::int32_t& value) = 0;
  virtual std::int16_t ReadInt16() = 0;  // default -1
  virtual std::uint32_t ReadInt16(std::int16_t& value) = 0;
  virtual float ReadFloat() = 0;  // default 0
  virtual std::uint32_t ReadFloat(float& value) = 0;
  virtual double ReadDouble() = 0;  // default -1
  virtual std::uint32_t ReadDouble(double& value) = 0;
  virtual std::uint8_t ReadInt8() = 0;  // default 0
  virtual std::uint32_t ReadInt8(std::uint8_t& value) = 0;
  virtual std::int64_t ReadInt64() = 0;  // default -1
  virtual std::uint32_t ReadInt64(std::int64_t& value) = 0;
  virtual std::string ReadUtf8String() = 0;  // default empty
  virtual std::uint32_t ReadUtf8String(std::string& text) = 0;
  virtual std::uint32_t ReadUtf8StringArray(std::vector<std::string>& texts) = 0;
  virtual std::uint32_t ReadLine(std::string& line) = 0;

  virtual std::uint32_t Write(const void* src, std::uint32_t n) = 0;
  virtual std::uint32_t WriteInt32(std::int32_t value) = 0;
  virtual std::uint32_t WriteInt16(std::int16_t value) = 0;
  virtual std::uint32_t WriteFloat(float value) = 0;
  virtual std::uint32_t WriteDouble(double value) = 0;
  virtual std::uint32_t WriteInt8(std::uint8_t value) = 0;
  virtual std::uint32_t WriteInt64(std::int64_t value) = 0;
  virtual std::uint32_t WriteUtf8String(const std::string& text) = 0;
  virtual std::uint32_t WriteUtf8StringArray(const std::vector<std::string>& texts) = 0;
  virtual std::uint32_t WriteLine(const std::string& line) = 0;

  virtual bool IsSwapBytes() = 0;
  virtual void SetSwapBytes(bool swapBytes) = 0;
  virtual void Flush() = 0;
};

}  // namespace cohesa
