#include "persistence/TapDbEngine.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include "codec/DeviceFieldVisitors.h"
#include "persistence/DatabaseFiles.h"
#include "persistence/DeviceRow.h"
#include "persistence/Guarded.h"
#include "persistence/KeyedStatement.h"
#include "persistence/StatementText.h"
#include "platform/logging/LogLine.h"

namespace KT {

namespace {

template <class Record>
inline constexpr DeviceTable kTableOf = DeviceTable::Current;
template <>
inline constexpr DeviceTable kTableOf<BluetoothDeviceSummary> = DeviceTable::Trusted;

constexpr const char* kKeyColumn = "sumId";
constexpr const char* kGetListFailed = "[KTData] Get zentap device list failed:";

}  // namespace

template <class Record>
TapDbEngine<Record>::TapDbEngine(const TapEngineNames& names) : names_(names) {
  Init();
}

template <class Record>
bool TapDbEngine<Record>::Init() {
  const bool isReady = Guarded("[KTData] Init database filed:", names_.init, [this] {
    content_.keyColumn = kKeyColumn;
    content_.tableName = names_.tableName;
    content_.dirPath = kDatabaseFolder;
    content_.fileName = std::string(names_.filePrefix) + kDatabaseFileName;
    StatementText insert;
    insert << "INSERT INTO " << content_.tableName;
    AppendInsertColumns(insert);
    insertText_ = insert.str();
    return InitDb(content_);
  });
  if (!isReady) {
    platform::LogFailure(names_.init, "[KTData] Init database failed.");
  }
  return isReady;
}

template <class Record>
bool TapDbEngine<Record>::AddZentapDeviceInfo(const std::string& sumId, const Record& info) {
  return WithDatabase(content_, "[KTData] Add zentap device failed:", names_.add, [&](SQLite::Database& database) {
    SQLite::Statement insert(database, insertText_);
    BindDeviceRow<kTableOf<Record>>(insert, sumId, info);
    insert.exec();
    return true;
  });
}

template <class Record>
bool TapDbEngine<Record>::DeleteZentapDeviceInfo(const std::string& sumId) {
  if (!IsOpen(content_, names_.remove)) {
    return false;
  }
  platform::LogProgress(names_.remove, "[KTData] Delete zentap device.");
  return DeleteDbItem(sumId, content_);
}

template <class Record>
bool TapDbEngine<Record>::UpdateZentapDeviceInfo(const std::string& sumId, const Record& info) {
  return WithDatabase(content_, "[KTData] Update zentap device failed:", names_.update, [&](SQLite::Database&) {
    DeleteZentapDeviceInfo(sumId);
    return AddZentapDeviceInfo(sumId, info);
  });
}

template <class Record>
bool TapDbEngine<Record>::UpdateZentapDeviceInfoList(const std::vector<Record>& list) {
  return WithDatabase(content_, "[KTData] Update zentap device failed:", names_.updateList, [&](SQLite::Database&) {
    for (const Record& info : list) {
      DeleteZentapDeviceInfo(info.summary);
      if (!AddZentapDeviceInfo(content_.keyColumn, info)) {
        return false;
      }
    }
    return true;
  });
}

template <class Record>
bool TapDbEngine<Record>::GetZentapDeviceInfoList(std::vector<Record>& list) {
  return WithDatabase(content_, kGetListFailed, names_.getList, [&](SQLite::Database& database) {
    list.clear();
    SQLite::Statement select(database, "SELECT * FROM " + content_.tableName);
    const DeviceRowReader<kTableOf<Record>> row(select);
    while (select.executeStep()) {
      list.push_back(row.Read());
    }
    return true;
  });
}

template <class Record>
bool TapDbEngine<Record>::GetZentapDeviceInfo(const std::string& sumId, Record& info) {
  return WithDatabase(content_, "[KTData] Get zentap device failed:", names_.get, [&](SQLite::Database& database) {
    KeyedStatement select(database, "SELECT * FROM ", content_.tableName, kKeyColumn, sumId);
    const DeviceRowReader<kTableOf<Record>> row(select.Sql());
    while (select.Sql().executeStep()) {
      info = row.Read();
    }
    return true;
  });
}

template <class Record>
void TapDbEngine<Record>::AppendColumnDefs(std::ostream& statement) const {
  AppendDeviceColumnDefs<kTableOf<Record>>(statement);
}

template <class Record>
void TapDbEngine<Record>::AppendInsertColumns(std::ostream& statement) const {
  AppendDeviceInsertColumns<kTableOf<Record>>(statement);
}

template class TapDbEngine<CurrZentapDeviceInfo>;
template class TapDbEngine<BluetoothDeviceSummary>;

}  // namespace KT
