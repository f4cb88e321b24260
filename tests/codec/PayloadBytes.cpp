#include "tests/codec/PayloadBytes.h"

#include <gtest/gtest.h>

#include <cctype>
#include <stdexcept>

namespace codec_tests {

Bytes Hex(std::string_view text) {
  std::string digits;
  for (const char c : text) {
    if (std::isspace(static_cast<unsigned char>(c)) == 0) digits.push_back(c);
  }
  if (digits.size() % 2 != 0) throw std::invalid_argument("half a byte in: " + digits);
  Bytes bytes;
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    bytes.push_back(static_cast<std::uint8_t>(std::stoul(digits.substr(i, 2), nullptr, 16)));
  }
  return bytes;
}

Bytes Text(std::string_view text) { return {text.begin(), text.end()}; }

Bytes Joined(const std::vector<Bytes>& parts) {
  Bytes all;
  for (const Bytes& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

Bytes Encoded(KT::IpcRequest& message, std::uint32_t capacity) {
  const auto parcel = std::make_shared<KT::MessageParcel>(capacity, nullptr, true);
  message.Serialize(parcel);
  const std::int32_t size = parcel->GetDataSize();
  EXPECT_GE(size, 0) << "the message does not fit";
  return {parcel->GetBuffer(), parcel->GetBuffer() + (size < 0 ? 0 : size)};
}

}  // namespace codec_tests
