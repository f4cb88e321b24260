#include "apps/marnockctl/StoreRows.h"

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Statement.h>

#include <string_view>

#include "persistence/DeviceRow.h"

namespace KT {

namespace {

std::vector<StoredPeer> ReadPeers(SQLite::Statement& select) {
  std::vector<StoredPeer> rows;
  while (select.executeStep()) {
    rows.push_back({select.getColumn("id").getInt64(), select.getColumn("udId").getString(),
                    select.getColumn("sumId").getString()});
  }
  return rows;
}

template <DeviceTable table>
std::vector<StoredDevice<TableRecord<table>>> ReadDevices(SQLite::Statement& select) {
  const DeviceRowReader<table> reader(select);
  std::vector<StoredDevice<TableRecord<table>>> rows;
  while (select.executeStep()) {
    rows.push_back({select.getColumn("id").getInt64(), select.getColumn("sumId").getString(), reader.Read()});
  }
  return rows;
}

}  // namespace

StoreRows ReadRows(const StoreFile& file, SQLite::Database& database) {
  SQLite::Statement select(database, std::string("SELECT * FROM ") + file.tableName);
  const std::string_view name = file.name;
  if (name == "peer") {
    return ReadPeers(select);
  }
  if (name == "current") {
    return ReadDevices<DeviceTable::Current>(select);
  }
  return ReadDevices<DeviceTable::Trusted>(select);
}

}  // namespace KT
