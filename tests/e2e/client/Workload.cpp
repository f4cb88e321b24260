#include "tests/e2e/client/Workload.h"

#include <algorithm>

#include "codec/messages/CurrZentapMessages.h"
#include "codec/messages/PeerSumMessages.h"
#include "codec/messages/TrustedZentapMessages.h"
#include "tests/e2e/client/Payload.h"

namespace e2e {

namespace {

constexpr std::size_t kKeysPerClient = 2;  // of a kind; the lists of a few clients have to fit their replies
constexpr std::size_t kReadsPerChange = 39;
constexpr char kPkgName[] = "load";

std::string Hex(const std::string& bytes) {
  std::string text;
  for (const char byte : bytes) {
    text += "0123456789abcdef"[static_cast<unsigned char>(byte) >> 4];
    text += "0123456789abcdef"[static_cast<unsigned char>(byte) & 15];
  }
  return text;
}

template <class Request>
WorkItem Expecting(Request request, const typename Request::Response& response) {
  return {Request::kCode, Encode(std::move(request)), [expected = Encode(response)](const std::string& payload) {
            return payload == expected ? std::string() : "expected " + Hex(expected) + ", seen " + Hex(payload);
          }};
}

template <class Request>
Request For(const std::string& key) {
  Request request;
  request.pkgName = kPkgName;
  request.sumId = key;
  return request;
}

// Responses that echo the package name have such a member.
template <class Response>
Response Success() {
  Response response;
  if constexpr (requires { response.pkgName; }) {
    response.pkgName = kPkgName;
  }
  return response;
}

template <class Devices>
auto Find(Devices& devices, const std::string& key) {
  return std::find_if(devices.begin(), devices.end(), [&](const auto& device) { return device.first == key; });
}

template <class Devices>
void Erase(Devices& devices, const std::string& key) {
  std::erase_if(devices, [&](const auto& device) { return device.first == key; });
}

}  // namespace

Workload::Workload(int client, Changes changes)
    : name_("c" + std::to_string(client) + "-"),
      random_(static_cast<std::mt19937::result_type>(client)),
      allowed_(changes) {}

WorkItem Workload::Next() {
  if (cleared_ < 3 * kKeysPerClient) {
    return Clear(cleared_++);
  }
  return Below(kReadsPerChange + 1) == 0 ? Change() : Read();
}

WorkItem Workload::Clear(std::size_t step) {
  const std::string key = Key(step / 3);
  switch (step % 3) {
    case 0:
      return DeletePeer(key);
    case 1:
      return DeleteDevice<KT::TrustedZentapDeviceDeleteRequest>(trusted_, key);
    default:
      return DeleteDevice<KT::CurrZentapDeviceDeleteRequest>(current_, key);
  }
}

WorkItem Workload::Change() {
  ++changes_;
  if (allowed_ == Changes::Peers) {
    return SetPeer();
  }
  switch (Below(9)) {
    case 0:
    case 1:
    case 2:
      return Clear(Below(3 * kKeysPerClient));
    case 3:
    case 4:
      return SetDevice<KT::TrustedZentapDeviceSetRequest>(trusted_);
    case 5:
    case 6:
      return SetDevice<KT::CurrZentapDeviceSetRequest>(current_);
    default:
      return SetPeer();
  }
}

WorkItem Workload::Read() {
  switch (Below(8)) {
    case 0:
      return ListDevices<KT::TrustedZentapDeviceGetListRequest>(trusted_);
    case 1:
      return ListDevices<KT::CurrZentapDeviceGetListRequest>(current_);
    case 2:
    case 3:
      return GetDevice<KT::TrustedZentapDeviceGetRequest>(trusted_);
    case 4:
    case 5:
      return GetDevice<KT::CurrZentapDeviceGetRequest>(current_);
    default:
      return GetPeer();
  }
}

template <class Request, class Record>
WorkItem Workload::SetDevice(Devices<Record>& devices) {
  auto request = For<Request>(AnyKey());
  request.info.devName = name_ + std::to_string(changes_);
  request.info.macAddrInt = (std::int64_t{1} << 40) + changes_;
  request.info.trustType = 0xFFFFFFFF;
  Erase(devices, request.sumId);
  devices.emplace_back(request.sumId, request.info);
  return Expecting(std::move(request), Success<typename Request::Response>());
}

template <class Request, class Record>
WorkItem Workload::DeleteDevice(Devices<Record>& devices, const std::string& key) {
  auto request = For<Request>(key);
  Erase(devices, request.sumId);
  return Expecting(std::move(request), Success<typename Request::Response>());
}

template <class Request, class Record>
WorkItem Workload::GetDevice(const Devices<Record>& devices) {
  auto request = For<Request>(AnyKey());
  auto response = Success<typename Request::Response>();
  if (const auto found = Find(devices, request.sumId); found != devices.end()) {
    response.info = found->second;
  }
  return Expecting(std::move(request), response);
}

// A list also holds what other clients have stored, in between: only this client's records are compared.
template <class Request, class Record>
WorkItem Workload::ListDevices(const Devices<Record>& devices) {
  Request request;
  request.pkgName = kPkgName;
  std::vector<Record> expected;
  for (const auto& device : devices) {
    expected.push_back(device.second);
  }
  return {Request::kCode, Encode(std::move(request)), [expected, name = name_](const std::string& payload) {
            auto response = Decode<typename Request::Response>(payload);
            if (response.result != 0 || Encode(response) != payload) {
              return "not a list: " + Hex(payload);
            }
            std::erase_if(response.list, [&](const Record& record) { return !record.devName.starts_with(name); });
            return response.list == expected ? std::string() : "not the devices stored: " + Hex(payload);
          }};
}

WorkItem Workload::SetPeer() {
  KT::PeerSumSetRequest request;
  request.udId = AnyKey();
  request.sumId = "sum-" + std::to_string(changes_);
  peers_[request.udId] = request.sumId;
  return Expecting(std::move(request), {});
}

WorkItem Workload::DeletePeer(const std::string& key) {
  KT::PeerSumDeleteRequest request;
  request.udId = key;
  peers_.erase(request.udId);
  return Expecting(std::move(request), {});
}

WorkItem Workload::GetPeer() {
  KT::PeerSumGetRequest request;
  request.udId = AnyKey();
  KT::PeerSumGetResponse response;
  if (const auto found = peers_.find(request.udId); found != peers_.end()) {
    response.sumId = found->second;
  }
  return Expecting(std::move(request), response);
}

std::size_t Workload::Below(std::size_t end) { return random_() % end; }

std::string Workload::Key(std::size_t number) const { return name_ + "key-" + std::to_string(number); }

std::string Workload::AnyKey() { return Key(Below(kKeysPerClient)); }

}  // namespace e2e
