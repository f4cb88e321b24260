// The messages about the devices that are connected now.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "codec/CurrZentapDeviceInfo.h"
#include "codec/messages/Message.h"

namespace KT {

class CurrZentapDeviceSetResponse final : public Message<CurrZentapDeviceSetResponse> {
 public:
  std::int32_t result = 0;

  template <class Self, class Visitor>
  static void Fields(Self& self, Visitor&& visit) {
    visit("result", self.result);
  }

  bool operator==(const CurrZentapDeviceSetResponse&) const = default;
};

class CurrZentapDeviceSetRequest final : public Message<CurrZentapDeviceSetRequest> {
 public:
  static constexpr std::int32_t kCode = 0xc40005;
  using Response = CurrZentapDeviceSetResponse;

  std::string pkgName;
  std::string sumId;
  CurrZentapDeviceInfo info;

  template <class Self, class Visitor>
  static void Fields(Self& self, Visitor&& visit) {
    visit("pkgName", self.pkgName);
    visit("sumId", self.sumId);
    visit("info", self.info, kFullRecord);
  }

  bool operator==(const CurrZentapDeviceSetRequest&) const = default;
};

class CurrZentapDeviceGetResponse final : public Message<CurrZentapDeviceGetResponse> {
 public:
  std::string pkgName;
  std::int32_t result = 0;
  CurrZentapDeviceInfo info;

  template <class Self, class Visitor>
  static void Fields(Self& self, Visitor&& visit) {
    visit("pkgName", self.pkgName);
    visit("result", self.result);
    visit("info", self.info, kReadBackRecord);
  }

  bool operator==(const CurrZentapDeviceGetResponse&) const = default;
};

class CurrZentapDeviceGetRequest final : public Message<CurrZentapDeviceGetRequest> {
 public:
  static constexpr std::int32_t kCode = 0xc40006;
  using Response = CurrZentapDeviceGetResponse;

  std::string pkgName;
  std::string sumId;

  template <class Self, class Visitor>
  static void Fields(Self& self, Visitor&& visit) {
    visit("pkgName", self.pkgName);
    visit("sumId", self.sumId);
  }

  bool operator==(const CurrZentapDeviceGetRequest&) const = default;
};

class CurrZentapDeviceGetListResponse final : public Message<CurrZentapDeviceGetListResponse> {
 public:
  std::string pkgName;
  std::int32_t count = 0;  // set it to the size of the list
  std::vector<CurrZentapDeviceInfo> list;
  std::int32_t result = 0;

  template <class Self, class Visitor>
  static void Fields(Self& self, Visitor&& visit) {
    visit("pkgName", self.pkgName);
    visit("count", "list", self.count, self.list, kReadBackRecord);
    visit("result", self.result);
  }

  bool operator==(const CurrZentapDeviceGetListResponse&) const = default;
};

class CurrZentapDeviceGetListRequest final : public Message<CurrZentapDeviceGetListRequest> {
 public:
  static constexpr std::int32_t kCode = 0xc40007;
  using Response = CurrZentapDeviceGetListResponse;

  std::string pkgName;

  template <class Self, class Visitor>
  static void Fields(Self& self, Visitor&& visit) {
    visit("pkgName", self.pkgName);
  }

  bool operator==(const CurrZentapDeviceGetListRequest&) const = default;
};

class CurrZentapDeviceDeleteResponse final : public Message<CurrZentapDeviceDeleteResponse> {
 public:
  std::int32_t result = 0;

  template <class Self, class Visitor>
  static void Fields(Self& self, Visitor&& visit) {
    visit("result", self.result);
  }

  bool operator==(const CurrZentapDeviceDeleteResponse&) const = default;
};

class CurrZentapDeviceDeleteRequest final : public Message<CurrZentapDeviceDeleteRequest> {
 public:
  static constexpr std::int32_t kCode = 0xc40008;
  using Response = CurrZentapDeviceDeleteResponse;

  std::string pkgName;
  std::string sumId;

  template <class Self, class Visitor>
  static void Fields(Self& self, Visitor&& visit) {
    visit("pkgName", self.pkgName);
    visit("sumId", self.sumId);
  }

  bool operator==(const CurrZentapDeviceDeleteRequest&) const = default;
};

}  // namespace KT
