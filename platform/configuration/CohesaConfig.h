// The suite's configuration library, as far as Marnock uses it: the paired-device records.
#pragma once

#include <memory>
#include <vector>

#include "assistant_export.h"

struct BluetoothDeviceSummary;

// Where the reference library takes its records from.
class ASSISTANT_EXPORT CohesaConfigSource {
 public:
  virtual ~CohesaConfigSource();
  // Fill the argument and return true, or return false when there is nothing to give.
  virtual bool PairDeviceParam(BluetoothDeviceSummary& device) const = 0;
  virtual bool SonavoDevices(std::vector<BluetoothDeviceSummary>& devices) const = 0;
};

class ASSISTANT_EXPORT CohesaConfig {
 public:
  // The device that is paired now. False, and the argument untouched, when the source has none or there is no source.
  static bool GetPairDeviceParam(BluetoothDeviceSummary& device);

  // The trusted devices, in the library's order. False as above; true with an empty list is an answer.
  static bool GetSonavoDevice(std::vector<BluetoothDeviceSummary>& devices);

  // Sets where records come from (null: nowhere, and both calls answer false). Not while another thread reads.
  static void SetSource(std::unique_ptr<CohesaConfigSource> source);
};
