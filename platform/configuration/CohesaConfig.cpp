#include "platform/configuration/CohesaConfig.h"

#include <utility>

namespace {

std::unique_ptr<CohesaConfigSource>& Source() {
  static std::unique_ptr<CohesaConfigSource> source;
  return source;
}

}  // namespace

CohesaConfigSource::~CohesaConfigSource() = default;

bool CohesaConfig::GetPairDeviceParam(BluetoothDeviceSummary& device) {
  return Source() != nullptr && Source()->PairDeviceParam(device);
}

bool CohesaConfig::GetSonavoDevice(std::vector<BluetoothDeviceSummary>& devices) {
  return Source() != nullptr && Source()->SonavoDevices(devices);
}

void CohesaConfig::SetSource(std::unique_ptr<CohesaConfigSource> source) { Source() = std::move(source); }
