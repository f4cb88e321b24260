// One trusted tap device, as it travels between clients, the service and the database.
#pragma once

#include <cstdint>
#include <string>

// Strings are UTF-8 by convention; nothing checks them. The sumId that keys a device's row is not part of the record:
// it travels beside it.
//
// The order of declaration is the order on the stream. codec/DeviceFields.h describes every field once more, with its
// profiles and columns; a field that is added here has to be added there.
struct BluetoothDeviceSummary {
  std::int32_t devType = 0;
  std::int32_t extraInt1 = 0;  // passed on as it came; callers must not rely on a default
  std::string summary;
  std::string deviceId;
  std::string devName;
  std::string userName;
  std::string nickName;
  std::string macAddr;
  std::int64_t macAddrInt = 0;  // as the client sent it, never derived from macAddr
  bool isPaired = false;
  std::int32_t shareType = 1;
  bool isReverseChannel = true;
  bool isWifi5GAbility = true;
  bool isAuthor = false;
  std::string modelName;
  std::string peerUuid;
  std::int32_t accountInfo = 0;
  bool isTrusted = false;
  std::int32_t connectType = 2;
  std::int32_t deviceType = -1;
  std::int32_t extraInt2 = -1;  // passed on as it came
  std::uint32_t trustType = 0;
  std::string peerDeviceVersion;
  bool isSupportPlenix = false;

  bool operator==(const BluetoothDeviceSummary&) const = default;
};
