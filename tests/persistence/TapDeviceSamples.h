// Device records in which every field has a value of its own, and the rows that they become.
#pragma once

#include <limits>
#include <string>

#include "codec/BluetoothDeviceSummary.h"
#include "codec/CurrZentapDeviceInfo.h"

inline BluetoothDeviceSummary SampleTrusted() {
  BluetoothDeviceSummary device;
  device.devType = -2;
  device.extraInt1 = 901;
  device.summary = "the summary";
  device.deviceId = "the deviceId";
  device.devName = "J\u00fcrgen's \U0001F4F1";
  device.userName = "the userName";
  device.nickName = "";
  device.macAddr = "AA:BB:CC:DD:EE:FF";
  device.macAddrInt = std::numeric_limits<std::int64_t>::min();
  device.isPaired = true;
  device.shareType = 10;
  device.isReverseChannel = false;
  device.isWifi5GAbility = true;
  device.isAuthor = true;
  device.modelName = "the modelName";
  device.peerUuid = "the peerUuid";
  device.accountInfo = 16;
  device.isTrusted = true;
  device.connectType = 18;
  device.deviceType = std::numeric_limits<std::int32_t>::min();
  device.extraInt2 = 902;
  device.trustType = std::numeric_limits<std::uint32_t>::max();
  device.peerDeviceVersion = "the peerDeviceVersion";
  device.isSupportPlenix = true;
  return device;
}

inline CurrZentapDeviceInfo SampleCurrent() {
  CurrZentapDeviceInfo device;
  static_cast<BluetoothDeviceSummary&>(device) = SampleTrusted();
  device.isConnected = 22;
  device.apkVersionNotMatch = 23;
  device.pairedIsAuthorized = 24;
  device.isFileSystemSupported = 25;
  device.isPhoneMirrorSupported = 26;
  device.multiDeviceSyncSwitch = 27;
  device.pairedDeviceIsReconnect = std::numeric_limits<std::int32_t>::max();
  device.pairedDeviceReconnectPermit = "the permit";
  return device;
}

// Columns 1 and up of the rows, joined by "|", under the sumId "key".
inline constexpr const char* kSampleTrustedRow =
    "key|-2|the summary|J\u00fcrgen's \U0001F4F1|the deviceId|the userName||AA:BB:CC:DD:EE:FF|-9223372036854775808|1|"
    "10|0|1|1|the modelName|the peerUuid|16|1|18|-2147483648|4294967295|the peerDeviceVersion|1";
inline constexpr const char* kSampleCurrentRow =
    "key|-2|the summary|J\u00fcrgen's \U0001F4F1|the userName||AA:BB:CC:DD:EE:FF|-9223372036854775808|1|10|0|1|1|"
    "the modelName|the peerUuid|16|1|18|-2147483648|4294967295|the peerDeviceVersion|22|23|24|25|26|27|2147483647|"
    "the permit";

// What is read back: fields that the table does not hold have their defaults.
inline BluetoothDeviceSummary SampleTrustedReadBack() {
  BluetoothDeviceSummary device = SampleTrusted();
  device.extraInt1 = 0;
  device.extraInt2 = -1;
  return device;
}

inline CurrZentapDeviceInfo SampleCurrentReadBack() {
  CurrZentapDeviceInfo device = SampleCurrent();
  device.extraInt1 = 0;
  device.extraInt2 = -1;
  device.deviceId = "";
  device.isSupportPlenix = false;
  return device;
}
