#include "persistence/PeerDeviceDbEngine.h"

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include "persistence/DatabaseFiles.h"
#include "persistence/Guarded.h"
#include "persistence/KeyedStatement.h"
#include "persistence/StatementText.h"
#include "platform/logging/LogLine.h"

namespace KT {

namespace {

constexpr const char* kInit = "KT::PeerDeviceDbEngine::Init";
constexpr const char* kAddPeerDevice = "KT::PeerDeviceDbEngine::AddPeerDevice";
constexpr const char* kDeletePeerDevice = "KT::PeerDeviceDbEngine::DeletePeerDevice";
constexpr const char* kUpdatePeerDevice = "KT::PeerDeviceDbEngine::UpdatePeerDevice";
constexpr const char* kQueryPeerDevice = "KT::PeerDeviceDbEngine::QueryPeerDevice";

constexpr const char* kKeyColumn = "udId";

}  // namespace

PeerDeviceDbEngine::PeerDeviceDbEngine() { Init(); }

bool PeerDeviceDbEngine::Init() {
  const bool isReady = Guarded("[KTData] Init database filed:", kInit, [this] {
    content_.keyColumn = kKeyColumn;
    content_.tableName = "PEER_DEVICE";
    content_.dirPath = kDatabaseFolder;
    content_.fileName = std::string("PeerDeviceInfo1") + kDatabaseFileName;
    return InitDb(content_);
  });
  if (!isReady) {
    platform::LogFailure(kInit, "[KTData] Init peer device database failed.");
  }
  return isReady;
}

bool PeerDeviceDbEngine::AddPeerDevice(const std::string& udId, const std::string& sumId) {
  return WithDatabase(content_, "[KTData] Add peer device failed:", kAddPeerDevice, [&](SQLite::Database& database) {
    StatementText text;
    text << "INSERT INTO " << content_.tableName;
    AppendInsertColumns(text);
    SQLite::Statement insert(database, text.str());
    insert.bind(1, udId);
    insert.bind(2, sumId);
    insert.exec();
    return true;
  });
}

bool PeerDeviceDbEngine::DeletePeerDevice(const std::string& udId) {
  if (!IsOpen(content_, kDeletePeerDevice)) {
    return false;
  }
  platform::LogProgress(kDeletePeerDevice, "[KTData] Delete peer device.");
  return DeleteRows(kKeyColumn, udId, content_, kDeletePeerDevice);
}

bool PeerDeviceDbEngine::UpdatePeerDevice(const std::string& udId, const std::string& sumId) {
  return WithDatabase(content_, "[KTData] Update peer device failed:", kUpdatePeerDevice, [&](SQLite::Database&) {
    DeletePeerDevice(udId);
    return AddPeerDevice(udId, sumId);
  });
}

bool PeerDeviceDbEngine::QueryPeerDevice(const std::string& udId, std::string& sumId) {
  return WithDatabase(content_, "[KTData] Get peer device failed:", kQueryPeerDevice, [&](SQLite::Database& database) {
    KeyedStatement select(database, "SELECT * FROM ", content_.tableName, kKeyColumn, udId);
    while (select.Sql().executeStep()) {
      sumId = select.Sql().getColumn("sumId").getString();
    }
    return true;
  });
}

void PeerDeviceDbEngine::AppendColumnDefs(std::ostream& statement) const {
  statement << "(id INTEGER PRIMARY KEY AUTOINCREMENT, udId TEXT NOT NULL, sumId TEXT NOT NULL);";
}

void PeerDeviceDbEngine::AppendInsertColumns(std::ostream& statement) const {
  statement << " (udId, sumId) VALUES(? , ?)";
}

}  // namespace KT
