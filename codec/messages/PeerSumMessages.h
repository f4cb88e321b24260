// The messages about peer devices: a unique device id and the summary id mapped to it. None carries a pkgName.
#pragma once

#include <cstdint>
#include <string>

#include "codec/messages/Message.h"

namespace KT {

class PeerSumSetResponse final : public Message<PeerSumSetResponse> {
 public:
  std::int32_t result = 0;

  template <class Self, class Visitor>
  static void Fields(Self& self, Visitor&& visit) {
    visit("result", self.result);
  }

  bool operator==(const PeerSumSetResponse&) const = default;
};

class PeerSumSetRequest final : public Message<PeerSumSetRequest> {
 public:
  static constexpr std::int32_t kCode = 0xc40009;
  using Response = PeerSumSetResponse;

  std::string udId;
  std::string sumId;

  template <class Self, class Visitor>
  static void Fields(Self& self, Visitor&& visit) {
    visit("udId", self.udId);
    visit("sumId", self.sumId);
  }

  bool operator==(const PeerSumSetRequest&) const = default;
};

class PeerSumGetResponse final : public Message<PeerSumGetResponse> {
 public:
  std::string sumId;
  std::int32_t result = 0;

  template <class Self, class Visitor>
  static void Fields(Self& self, Visitor&& visit) {
    visit("sumId", self.sumId);
    visit("result", self.result);
  }

  bool operator==(const PeerSumGetResponse&) const = default;
};

class PeerSumGetRequest final : public Message<PeerSumGetRequest> {
 public:
  static constexpr std::int32_t kCode = 0xc4000a;
  using Response = PeerSumGetResponse;

  std::string udId;

  template <class Self, class Visitor>
  static void Fields(Self& self, Visitor&& visit) {
    visit("udId", self.udId);
  }

  bool operator==(const PeerSumGetRequest&) const = default;
};

class PeerSumDeleteResponse final : public Message<PeerSumDeleteResponse> {
 public:
  std::int32_t result = 0;

  template <class Self, class Visitor>
  static void Fields(Self& self, Visitor&& visit) {
    visit("result", self.result);
  }

  bool operator==(const PeerSumDeleteResponse&) const = default;
};

class PeerSumDeleteRequest final : public Message<PeerSumDeleteRequest> {
 public:
  static constexpr std::int32_t kCode = 0xc4000b;
  using Response = PeerSumDeleteResponse;

  std::string udId;

  template <class Self, class Visitor>
  static void Fields(Self& self, Visitor&& visit) {
    visit("udId", self.udId);
  }

  bool operator==(const PeerSumDeleteRequest&) const = default;
};

}  // namespace KT
