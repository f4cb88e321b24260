// Records of the size that a phone or tablet sends.
#pragma once

#include <string>

#include "codec/CurrZentapDeviceInfo.h"

namespace bench {

// A key as clients make them: 64 hexadecimal digits, different for each `number`.
std::string SampleKey(int number);

// Every field set, strings of 10 to 64 bytes, the same for the same `number`.
CurrZentapDeviceInfo SampleDevice(int number);
BluetoothDeviceSummary SampleTrustedDevice(int number);

}  // namespace bench
