// The file of --import: paired-device records in JSON, in place of the suite's configuration library.
//   {"paired": {field: value, ...} or null, "trusted": [{...}, ...] or null}
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "codec/BluetoothDeviceSummary.h"
#include "platform/configuration/CohesaConfig.h"

namespace KT {

class ImportFile final : public CohesaConfigSource {
 public:
  // Reads and checks the file at `utf8Path`. Throws std::runtime_error that names the file, the place in it and what is
  // wrong there.
  static std::unique_ptr<ImportFile> Read(const std::string& utf8Path);

  // The same from JSON text; the error does not name a file.
  explicit ImportFile(const std::string& json);

  // False where the file has null or nothing.
  bool PairDeviceParam(BluetoothDeviceSummary& device) const override;
  bool SonavoDevices(std::vector<BluetoothDeviceSummary>& devices) const override;

 private:
  std::optional<BluetoothDeviceSummary> paired_;
  std::optional<std::vector<BluetoothDeviceSummary>> trusted_;
};

}  // namespace KT
