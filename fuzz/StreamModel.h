// The data stream's rules once more, in the plainest form: what the stream is compared with.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace fuzz {

// Results are as the stream's: counts of bytes, or -1.
class StreamModel {
 public:
  StreamModel(std::vector<std::uint8_t> bytes, bool reading, bool swap)
      : bytes_(std::move(bytes)), reading_(reading), swap_(swap) {}

  const std::vector<std::uint8_t>& Bytes() const { return bytes_; }
  void SetSwap(bool swap) { swap_ = swap; }

  // A primitive of `width` bytes as a number; zero when it cannot be read.
  std::int64_t ReadNumber(std::size_t width, std::uint64_t& number);
  std::int64_t WriteNumber(std::size_t width, std::uint64_t number);
  std::int64_t ReadString(std::string& text);
  std::int64_t WriteString(const std::string& text);
  // The count with which an array would begin here.
  std::int32_t PeekArrayCount();
  std::int64_t ReadArray(std::vector<std::string>& texts);
  std::int64_t WriteArray(const std::vector<std::string>& texts);
  std::int64_t ReadLine(std::string& line);
  std::int64_t WriteLine(const std::string& line);
  std::int64_t ReadRaw(std::vector<std::uint8_t>& bytes);
  std::int64_t WriteRaw(const std::vector<std::uint8_t>& bytes);

 private:
  std::vector<std::uint8_t> bytes_;
  std::size_t position_ = 0;
  bool reading_;
  bool swap_;
  std::vector<std::uint8_t> scratch_;
};

}  // namespace fuzz
