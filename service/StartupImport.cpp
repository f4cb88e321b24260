#include "service/StartupImport.h"

#include <vector>

#include "platform/configuration/CohesaConfig.h"
#include "platform/logging/LogLine.h"
#include "service/Marnock.h"

namespace KT {

// A class, since GCC takes dllimport away from an exported function that is named as a friend.
class StartupImport {
 public:
  static void Run(Marnock& service) { service.GetDeviceFromRegistry(); }
};

void ImportDevicesAtStartup(Marnock& service) { StartupImport::Run(service); }

void Marnock::GetDeviceFromRegistry() {
  constexpr const char* kFunction = "KT::Marnock::GetDeviceFromRegistry";
  platform::LogProgress(kFunction, "[KTData] Get zentap devices from registry.");
  if (store_.IsDeviceDbExist()) {
    platform::LogProgress(kFunction, "[KTData] Zentap device database is exist.");
    return;
  }
  GetCurrDevice();
  GetTrustedDevice();
}

void Marnock::GetCurrDevice() {
  BluetoothDeviceSummary device;
  if (!CohesaConfig::GetPairDeviceParam(device)) {
    platform::LogFailure("KT::Marnock::GetCurrDevice", "[KTData] Get current zentap devices failed.");
    return;
  }
  std::vector<CurrZentapDeviceInfo> list(1);
  static_cast<BluetoothDeviceSummary&>(list.front()) = device;
  store_.SetCurrZentapDeviceInfoList(list);
}

void Marnock::GetTrustedDevice() {
  std::vector<BluetoothDeviceSummary> devices;
  if (!CohesaConfig::GetSonavoDevice(devices)) {
    platform::LogFailure("KT::Marnock::GetTrustedDevice", "[KTData] Get trusted zentap devices failed.");
    return;
  }
  store_.SetTrustedZentapDeviceInfoList(devices);
}

}  // namespace KT
