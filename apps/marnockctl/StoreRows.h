// The rows of a database file's table.
#pragma once

#include <SQLiteCpp/Database.h>

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "apps/recovery/StoreFile.h"
#include "codec/BluetoothDeviceSummary.h"
#include "codec/CurrZentapDeviceInfo.h"

namespace KT {

struct StoredPeer {
  std::int64_t id = 0;
  std::string udId;
  std::string sumId;
};

template <class Record>
struct StoredDevice {
  std::int64_t id = 0;
  std::string sumId;
  Record device;
};

using StoreRows = std::variant<std::vector<StoredPeer>, std::vector<StoredDevice<CurrZentapDeviceInfo>>,
                               std::vector<StoredDevice<BluetoothDeviceSummary>>>;

// All rows of the table of `file`, in SQLite's order, as the service would read them: values of another type than the
// column's are converted. Throws SQLite::Exception.
StoreRows ReadRows(const StoreFile& file, SQLite::Database& database);

}  // namespace KT
