// Payload bytes written down in tests, and messages to and from them.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "codec/IpcRequest.h"
#include "codec/MessageParcel.h"
#include "codec/PayloadLimits.h"

namespace codec_tests {

using Bytes = std::vector<std::uint8_t>;

// The bytes that `text` names in hexadecimal; blanks and line ends between them are for the reader.
Bytes Hex(std::string_view text);

// The bytes of a text, without its terminating zero.
Bytes Text(std::string_view text);

Bytes Joined(const std::vector<Bytes>& parts);

// What a message writes into a parcel of `capacity` bytes. Fails the test when the parcel reports an error.
Bytes Encoded(KT::IpcRequest& message, std::uint32_t capacity = KT::kMaxPayloadBytes);

// A message read from exactly these bytes.
template <class Message>
Message Decoded(Bytes payload) {
  Message message;
  message.Deserialize(
      std::make_shared<KT::MessageParcel>(static_cast<std::uint32_t>(payload.size()), payload.data(), false));
  return message;
}

}  // namespace codec_tests
