// Whether a get could give back what is about to be stored: the service's replies have a fixed capacity.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "codec/Protocol.h"
#include "codec/messages/EncodedSize.h"

namespace KT {

// Why `answer`, the response to a get, does not fit its reply, or nothing when it does.
template <class Response>
std::optional<std::string> WhyNotAnAnswer(const Response& answer) {
  const std::size_t size = EncodedSize(answer);
  if (size <= static_cast<std::size_t>(kReplyCapacityBytes)) {
    return std::nullopt;
  }
  return "the answer to a get would take " + std::to_string(size) + " bytes; the service's reply holds " +
         std::to_string(kReplyCapacityBytes);
}

}  // namespace KT
