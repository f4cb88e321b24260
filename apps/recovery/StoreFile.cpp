#include "apps/recovery/StoreFile.h"

#include "codec/DeviceFieldVisitors.h"

namespace KT {

namespace {

template <DeviceTable table>
std::vector<std::string> DeviceColumns() {
  std::vector<std::string> columns{"id", "sumId"};
  ForEachColumn<table>([&columns](const auto& field) { columns.emplace_back(field.name); });
  return columns;
}

}  // namespace

const std::vector<StoreFile>& StoreFiles() {
  static const std::vector<StoreFile> files{
      {"peer", "PeerDeviceInfo1G12NJ9DS39D.db", "PEER_DEVICE", {"id", "udId", "sumId"}},
      {"current", "CurrentZentapDeviceInfo1G12NJ9DS39D.db", "currZentapDeviceInfo",
       DeviceColumns<DeviceTable::Current>()},
      {"trusted", "TrustedZentapDeviceInfo2G12NJ9DS39D.db", "trustedZentapDeviceInfo",
       DeviceColumns<DeviceTable::Trusted>()},
  };
  return files;
}

}  // namespace KT
