// One tap device that is connected now.
#pragma once

#include <cstdint>
#include <string>

#include "codec/BluetoothDeviceSummary.h"

// Extends the trusted record; the same rules hold. Most of the integers answer yes or no, but they are whole integers
// and keep their value everywhere.
struct CurrZentapDeviceInfo : BluetoothDeviceSummary {
  std::int32_t isConnected = 0;
  std::int32_t apkVersionNotMatch = 0;
  std::int32_t pairedIsAuthorized = 0;
  std::int32_t isFileSystemSupported = 0;
  std::int32_t multiDeviceSyncSwitch = 0;
  std::int32_t isPhoneMirrorSupported = 0;
  std::int32_t pairedDeviceIsReconnect = 0;
  std::string pairedDeviceReconnectPermit;

  bool operator==(const CurrZentapDeviceInfo&) const = default;
};
