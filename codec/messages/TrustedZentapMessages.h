// The messages about the devices that the user has trusted.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "codec/BluetoothDeviceSummary.h"
#include "codec/messages/Message.h"

namespace KT {

class TrustedZentapDeviceSetResponse final : public Message<TrustedZentapDeviceSetResponse> {
 public:
  std::string pkgName;
  std::int32_t result = 0;

  template <class Self, class Visitor>
  static void Fields(Self& self, Visitor&& visit) {
    visit("pkgName", self.pkgName);
    visit("result", self.result);
  }

  bool operator==(const TrustedZentapDeviceSetResponse&) const = default;
};

class TrustedZentapDeviceSetRequest final : public Message<TrustedZentapDeviceSetRequest> {
 public:
  static constexpr std::int32_t kCode = 0xc40001;
  using Response = TrustedZentapDeviceSetResponse;

  std::string pkgName;
  std::string sumId;
  BluetoothDeviceSummary info;

  template <class Self, class Visitor>
  static void Fields(Self& self, Visitor&& visit) {
    visit("pkgName", self.pkgName);
    visit("sumId", self.sumId);
    visit("info", self.info, kTrustedRecord);
  }

  bool operator==(const TrustedZentapDeviceSetRequest&) const = default;
};

class TrustedZentapDeviceGetResponse final : public Message<TrustedZentapDeviceGetResponse> {
 public:
  std::string pkgName;
  std::int32_t result = 0;
  BluetoothDeviceSummary info;

  template <class Self, class Visitor>
  static void Fields(Self& self, Visitor&& visit) {
    visit("pkgName", self.pkgName);
    visit("result", self.result);
    visit("info", self.info, kTrustedRecord);
  }

  bool operator==(const TrustedZentapDeviceGetResponse&) const = default;
};

class TrustedZentapDeviceGetRequest final : public Message<TrustedZentapDeviceGetRequest> {
 public:
  static constexpr std::int32_t kCode = 0xc40002;
  using Response = TrustedZentapDeviceGetResponse;

  std::string pkgName;
  std::string sumId;

  template <class Self, class Visitor>
  static void Fields(Self& self, Visitor&& visit) {
    visit("pkgName", self.pkgName);
    visit("sumId", self.sumId);
  }

  bool operator==(const TrustedZentapDeviceGetRequest&) const = default;
};

class TrustedZentapDeviceGetListResponse final : public Message<TrustedZentapDeviceGetListResponse> {
 public:
  std::string pkgName;
  std::int32_t count = 0;  // set it to the size of the list
  std::vector<BluetoothDeviceSummary> list;
  std::int32_t result = 0;

  template <class Self, class Visitor>
  static void Fields(Self& self, Visitor&& visit) {
    visit("pkgName", self.pkgName);
    visit("count", "list", self.count, self.list, kTrustedRecord);
    visit("result", self.result);
  }

  bool operator==(const TrustedZentapDeviceGetListResponse&) const = default;
};

class TrustedZentapDeviceGetListRequest final : public Message<TrustedZentapDeviceGetListRequest> {
 public:
  static constexpr std::int32_t kCode = 0xc40003;
  using Response = TrustedZentapDeviceGetListResponse;

  std::string pkgName;

  template <class Self, class Visitor>
  static void Fields(Self& self, Visitor&& visit) {
    visit("pkgName", self.pkgName);
  }

  bool operator==(const TrustedZentapDeviceGetListRequest&) const = default;
};

class TrustedZentapDeviceDeleteResponse final : public Message<TrustedZentapDeviceDeleteResponse> {
 public:
  std::int32_t result = 0;

  template <class Self, class Visitor>
  static void Fields(Self& self, Visitor&& visit) {
    visit("result", self.result);
  }

  bool operator==(const TrustedZentapDeviceDeleteResponse&) const = default;
};

class TrustedZentapDeviceDeleteRequest final : public Message<TrustedZentapDeviceDeleteRequest> {
 public:
  static constexpr std::int32_t kCode = 0xc40004;
  using Response = TrustedZentapDeviceDeleteResponse;

  std::string pkgName;
  std::string sumId;

  template <class Self, class Visitor>
  static void Fields(Self& self, Visitor&& visit) {
    visit("pkgName", self.pkgName);
    visit("sumId", self.sumId);
  }

  bool operator==(const TrustedZentapDeviceDeleteRequest&) const = default;
};

}  // namespace KT
