// In what the commands for trusted and for current devices differ.
#pragma once

#include "client/RegistryClient.h"
#include "codec/DeviceFields.h"
#include "codec/Protocol.h"

namespace KT {

struct TrustedFamily {
  using Record = BluetoothDeviceSummary;
  using GetResponse = TrustedZentapDeviceGetResponse;
  static constexpr DeviceTable kTable = DeviceTable::Trusted;
  static constexpr const char* kName = "trusted";
  static constexpr int kListReplyCapacity = kTrustedListReplyCapacityBytes;
  static constexpr auto kSet = &RegistryClient::SetTrustedZentapDeviceInfo;
  static constexpr auto kGet = &RegistryClient::GetTrustedZentapDeviceInfo;
  static constexpr auto kList = &RegistryClient::GetTrustedZentapDeviceInfoList;
  static constexpr auto kDelete = &RegistryClient::DeleteTrustedZentapDeviceInfo;
};

struct CurrentFamily {
  using Record = CurrZentapDeviceInfo;
  using GetResponse = CurrZentapDeviceGetResponse;
  static constexpr DeviceTable kTable = DeviceTable::Current;
  static constexpr const char* kName = "current";
  static constexpr int kListReplyCapacity = kCurrentListReplyCapacityBytes;
  static constexpr auto kSet = &RegistryClient::SetCurrZentapDeviceInfo;
  static constexpr auto kGet = &RegistryClient::GetCurrZentapDeviceInfo;
  static constexpr auto kList = &RegistryClient::GetCurrZentapDeviceInfoList;
  static constexpr auto kDelete = &RegistryClient::DeleteCurrZentapDeviceInfo;
};

}  // namespace KT
