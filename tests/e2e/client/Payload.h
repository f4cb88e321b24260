// Messages to payload bytes and back.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "codec/MessageParcel.h"
#include "codec/messages/EncodedSize.h"

namespace e2e {

template <class Message>
std::string Encode(Message message) {
  const std::size_t size = KT::EncodedSize(message);
  const auto parcel = std::make_shared<KT::MessageParcel>(static_cast<std::uint32_t>(size), nullptr, true);
  message.Serialize(parcel);
  return {reinterpret_cast<const char*>(parcel->GetBuffer()), size};
}

template <class Message>
Message Decode(std::string payload) {
  Message message;
  if (!payload.empty()) {
    message.Deserialize(std::make_shared<KT::MessageParcel>(static_cast<std::uint32_t>(payload.size()),
                                                            reinterpret_cast<std::uint8_t*>(payload.data()), false));
  }
  return message;
}

}  // namespace e2e
