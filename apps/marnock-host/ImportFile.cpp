#include "apps/marnock-host/ImportFile.h"

#include <stdexcept>

#include "apps/json/ByteText.h"
#include "apps/json/RecordJson.h"
#include "platform/program/WholeInput.h"

namespace KT {

namespace {

constexpr std::size_t kMaxFileBytes = 64 * 1024 * 1024;

std::vector<BluetoothDeviceSummary> ReadDevices(const Json& list) {
  if (!list.is_array()) {
    throw std::runtime_error("trusted: expected an array of devices or null");
  }
  std::vector<BluetoothDeviceSummary> devices(list.size());
  for (std::size_t i = 0; i < list.size(); ++i) {
    ReadRecord(list[i], "trusted[" + std::to_string(i) + "]", devices[i]);
  }
  return devices;
}

}  // namespace

std::unique_ptr<ImportFile> ImportFile::Read(const std::string& utf8Path) {
  const std::string text = platform::ReadWholeFile(utf8Path, kMaxFileBytes);
  try {
    return std::make_unique<ImportFile>(text);
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(utf8Path + ": " + error.what());
  }
}

ImportFile::ImportFile(const std::string& json) {
  const Json document = ParseJson(json);
  if (!document.is_object()) {
    throw std::runtime_error("expected an object with \"paired\" and \"trusted\"");
  }
  for (const auto& [name, value] : document.items()) {
    if (name != "paired" && name != "trusted") {
      throw std::runtime_error("unknown member \"" + ToTerminalText(name) + "\"; \"paired\" and \"trusted\" are known");
    }
    if (value.is_null()) {
      continue;
    }
    if (name == "paired") {
      ReadRecord(value, "paired", paired_.emplace());
    } else {
      trusted_ = ReadDevices(value);
    }
  }
}

bool ImportFile::PairDeviceParam(BluetoothDeviceSummary& device) const {
  if (paired_.has_value()) {
    device = *paired_;
  }
  return paired_.has_value();
}

bool ImportFile::SonavoDevices(std::vector<BluetoothDeviceSummary>& devices) const {
  if (trusted_.has_value()) {
    devices = *trusted_;
  }
  return trusted_.has_value();
}

}  // namespace KT
