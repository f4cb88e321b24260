#include "bench/support/SampleDevices.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace bench {

namespace {

// `digits` hexadecimal digits that differ from one `seed` to the next throughout.
std::string Hexadecimal(unsigned seed, int digits) {
  std::string text;
  for (std::uint64_t state = seed + 1ULL; digits > 0; --digits) {
    state = state * 6364136223846793005ULL + 1442695040888963407ULL;
    text += "0123456789abcdef"[state >> 60U];
  }
  return text;
}

std::string Uuid(unsigned seed) {
  std::string text = Hexadecimal(seed, 36);
  for (const std::size_t dash : std::array<std::size_t, 4>{8, 13, 18, 23}) text[dash] = '-';
  return text;
}

void FillSummary(unsigned seed, BluetoothDeviceSummary& device) {
  device.devType = 14;
  device.extraInt1 = 1;
  device.summary = Hexadecimal(seed, 64);
  device.deviceId = Uuid(seed + 1);
  device.devName = "Study tablet " + std::to_string(seed);
  device.userName = "user-" + Hexadecimal(seed, 8);
  device.nickName = "Tablet of user " + std::to_string(seed);
  device.macAddr = "A4:5E:60:C2:17:9B";
  device.macAddrInt = 0xA45E60C2179B;
  device.isPaired = true;
  device.shareType = 3;
  device.modelName = "TB-X606F-2021";
  device.peerUuid = Uuid(seed + 2);
  device.accountInfo = 7;
  device.isTrusted = true;
  device.deviceType = 17;
  device.trustType = 2;
  device.peerDeviceVersion = "13.0.5.310";
  device.isSupportPlenix = true;
}

}  // namespace

std::string SampleKey(int number) { return Hexadecimal(static_cast<unsigned>(number), 64); }

CurrZentapDeviceInfo SampleDevice(int number) {
  CurrZentapDeviceInfo device;
  FillSummary(static_cast<unsigned>(number), device);
  device.isConnected = 1;
  device.pairedIsAuthorized = 1;
  device.isFileSystemSupported = 1;
  device.multiDeviceSyncSwitch = 1;
  device.isPhoneMirrorSupported = 1;
  device.pairedDeviceReconnectPermit = "always-permitted";
  return device;
}

BluetoothDeviceSummary SampleTrustedDevice(int number) {
  BluetoothDeviceSummary device;
  FillSummary(static_cast<unsigned>(number), device);
  return device;
}

}  // namespace bench
