// Records with no field at its default, and their bytes worked out by hand.
#pragma once

#include "codec/BluetoothDeviceSummary.h"
#include "codec/CurrZentapDeviceInfo.h"
#include "tests/codec/PayloadBytes.h"

namespace codec_tests {

BluetoothDeviceSummary SampleSummary();
CurrZentapDeviceInfo SampleCurrent();

// The encodings of the two. What the three profiles share is put together from parts, not encoded.
Bytes SampleTrustedBytes();
Bytes SampleFullBytes();
Bytes SampleReadBackBytes();

}  // namespace codec_tests
