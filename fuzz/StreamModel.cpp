#include "fuzz/StreamModel.h"

namespace fuzz {

namespace {

constexpr std::int64_t kFailed = -1;
constexpr std::int64_t kMaxArrayStrings = 25000;

}  // namespace

std::int64_t StreamModel::ReadRaw(std::vector<std::uint8_t>& bytes) {
  if (!reading_ || bytes_.size() - position_ < bytes.size()) return kFailed;
  for (std::uint8_t& byte : bytes) byte = bytes_[position_++];
  return static_cast<std::int64_t>(bytes.size());
}

std::int64_t StreamModel::WriteRaw(const std::vector<std::uint8_t>& bytes) {
  if (reading_ || bytes_.size() - position_ < bytes.size()) return kFailed;
  for (const std::uint8_t byte : bytes) bytes_[position_++] = byte;
  return static_cast<std::int64_t>(bytes.size());
}

std::int64_t StreamModel::ReadNumber(std::size_t width, std::uint64_t& number) {
  number = 0;
  std::vector<std::uint8_t> bytes(width);
  const std::int64_t result = ReadRaw(bytes);
  if (result == kFailed) return kFailed;
  for (std::size_t i = 0; i < width; ++i) {
    const std::size_t significance = swap_ ? width - 1 - i : i;
    number |= static_cast<std::uint64_t>(bytes[i]) << (8 * significance);
  }
  return result;
}

std::int64_t StreamModel::WriteNumber(std::size_t width, std::uint64_t number) {
  std::vector<std::uint8_t> bytes(width);
  for (std::size_t i = 0; i < width; ++i) {
    const std::size_t significance = swap_ ? width - 1 - i : i;
    bytes[i] = static_cast<std::uint8_t>(number >> (8 * significance));
  }
  return WriteRaw(bytes);
}

std::int64_t StreamModel::ReadString(std::string& text) {
  text.clear();
  std::uint64_t length = 0;
  ReadNumber(2, length);
  if (length == 0 || length >= 0x8000) return 0;
  scratch_.resize(length, 0);
  std::vector<std::uint8_t> bytes(length);
  const std::int64_t result = ReadRaw(bytes);
  if (result != kFailed) scratch_ = bytes;
  text.assign(scratch_.begin(), scratch_.end());
  return result + 2;
}

std::int64_t StreamModel::WriteString(const std::string& text) {
  WriteNumber(2, text.size());
  return WriteRaw({text.begin(), text.end()}) + 2;
}

std::int32_t StreamModel::PeekArrayCount() {
  const std::size_t position = position_;
  std::uint64_t number = 0;
  ReadNumber(4, number);
  position_ = position;
  return static_cast<std::int32_t>(number);
}

std::int64_t StreamModel::ReadArray(std::vector<std::string>& texts) {
  std::uint64_t number = 0;
  std::int64_t total = ReadNumber(4, number);
  const std::int64_t count = static_cast<std::int32_t>(number);
  if (count > kMaxArrayStrings) return count;
  for (std::int64_t i = 0; i < count; ++i) {
    texts.emplace_back();
    total += ReadString(texts.back());
  }
  return total;
}

std::int64_t StreamModel::WriteArray(const std::vector<std::string>& texts) {
  std::int64_t total = WriteNumber(4, texts.size());
  for (const std::string& text : texts) total += WriteString(text);
  return total;
}

std::int64_t StreamModel::ReadLine(std::string& line) {
  line.clear();
  std::vector<std::uint8_t> byte(1);
  while (ReadRaw(byte) == 1 && byte[0] != '\n') line.push_back(static_cast<char>(byte[0]));
  return static_cast<std::int64_t>(line.size());
}

std::int64_t StreamModel::WriteLine(const std::string& line) {
  WriteRaw({line.begin(), line.end()});
  WriteRaw({'\n'});
  return static_cast<std::int64_t>(line.size()) + 1;
}

}  // namespace fuzz
