#include "persistence/DbEngine.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <new>

#include "host/Utils.h"
#include "persistence/DatabaseCopy.h"
#include "persistence/DatabaseFiles.h"
#include "persistence/Guarded.h"
#include "persistence/KeyedStatement.h"
#include "persistence/StatementText.h"
#include "persistence/Transaction.h"
#include "platform/OperatingSystem.h"
#include "platform/logging/LogLine.h"
#include "platform/text/PlenixBase.h"

namespace KT {

namespace {

using platform::LogFailure;
using platform::LogProgress;
using platform::OperatingSystem;

constexpr const char* kInitDb = "KT::DbEngine::InitDb";
constexpr const char* kSaveDbIntoDisk = "KT::DbEngine::SaveDbIntoDisk";
constexpr const char* kLoadDbFromDisk = "KT::DbEngine::LoadDbFromDisk";
constexpr const char* kCreateTable = "KT::DbEngine::CreateTable";
constexpr const char* kDeleteDbItem = "KT::DbEngine::DeleteDbItem";

constexpr const char* kLoadFailed = "[KTData] Load local database failed:";

// False when the user is not known or the folder cannot be made.
bool FindFile(DbContent& content) {
  const std::wstring directory = Utils::GetCurrUserDefinePath(content.dirPath);
  if (directory.empty() || !Utils::CreateDir(directory)) {
    return false;
  }
  content.filePath = PlenixBase::UnicodeToUTF8(directory) + content.fileName;
  return true;
}

bool OpenMemory(DbContent& content) {
  if (content.dbContentPtr != nullptr) {
    content.dbContentPtr.reset();
    LogProgress(kInitDb, "[KTData] dbContentPtr is not nullptr.");
  }
  content.dbContentPtr.reset(new (std::nothrow)
                                 SQLite::Database(":memory:", SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE));
  if (content.dbContentPtr == nullptr) {
    LogFailure(kInitDb, "[KTData] dbContentPtr is nullptr.");
    return false;
  }
  return true;
}

// The first of them has no effect on SQLite; it is sent as part of the fixed sequence.
void SetPragmas(SQLite::Database& database) {
  Transaction transaction(database);
  database.exec("PRAGMA SQLITE_CONFIG_MEMSTATUS = 0");
  database.exec("PRAGMA auto_vacuum = 0");
  database.exec("PRAGMA cache_size = 1000");
  transaction.Commit();
}

// The file's name on its way through a save. The name without ".tmp" is the database's.
struct SavePaths {
  std::wstring file;
  std::wstring temporary;
};

// Whether there was a file to move. A move that fails counts as one: the later delete is then tried all the same.
bool MoveAside(const SavePaths& paths) {
  if (!FileExists(paths.file)) {
    return false;
  }
  if (!OperatingSystem::Get().MoveFileW(paths.file, paths.temporary)) {
    LogFailure(kSaveDbIntoDisk, "[KTData] Rename database filed.");
  }
  return true;
}

bool Save(DbContent& content) {
  return WithDatabase(content, "[KTData] Save database filed:", kSaveDbIntoDisk, [&](SQLite::Database& database) {
    // Deferred on purpose: it must not have locked anything when the copy starts, or the copy is refused.
    Transaction transaction(database);
    const std::wstring file = PlenixBase::UTF8ToUnicode(content.filePath);
    const SavePaths paths{file, file + L".tmp"};
    const bool movedAside = MoveAside(paths);
    SaveToFile(database, content.filePath);
    transaction.Commit();
    if (movedAside && !OperatingSystem::Get().DeleteFileW(paths.temporary)) {
      LogFailure(kSaveDbIntoDisk, "[KTData] Delete database filed.");
    }
    LogProgress(kSaveDbIntoDisk, "[KTData] Save database success.");
    return true;
  });
}

}  // namespace

DbEngine::~DbEngine() = default;

bool DbEngine::InitDb(DbContent& content) {
  return Guarded("[KTData] Init database filed:", kInitDb, [&] {
    if (!FindFile(content) || !OpenMemory(content)) {
      return false;
    }
    SetPragmas(*content.dbContentPtr);
    if (FileExists(PlenixBase::UTF8ToUnicode(content.filePath))) {
      // The table is not made after a load: the file is trusted to hold it.
      if (!LoadDbFromDisk(content)) {
        LogFailure(kInitDb, "[KTData] Load database failed.");
        return false;
      }
    } else if (!CreateTable(content)) {
      LogFailure(kInitDb, "[KTData] Create database failed.");
      return false;
    }
    LogProgress(kInitDb, "[KTData] Init database success.");
    return true;
  });
}

bool DbEngine::SaveDbIntoDisk(DbContent& content) {
  const bool isSaved = Save(content);
  if (isSaved) {
    failedSinceLastSaved_ = 0;
    ++saved_;
  } else {
    ++failedSinceLastSaved_;
  }
  return isSaved;
}

SaveCounts DbEngine::Saves() const { return {.saved = saved_, .failedSinceLastSaved = failedSinceLastSaved_}; }

bool DbEngine::LoadDbFromDisk(DbContent& content) {
  return WithDatabase(content, kLoadFailed, kLoadDbFromDisk, [&](SQLite::Database& database) {
    LoadFromFile(database, content.filePath);
    LogProgress(kLoadDbFromDisk, "[KTData] Load local database success.");
    return true;
  });
}

bool DbEngine::CreateTable(DbContent& content) {
  return WithDatabase(content, "[KTData] Create device database fail:", kCreateTable, [&](SQLite::Database& database) {
    Transaction transaction(database);
    StatementText text;
    text << "CREATE TABLE IF NOT EXISTS " << content.tableName;
    AppendColumnDefs(text);
    SQLite::Statement(database, text.str()).exec();
    transaction.Commit();
    LogProgress(kCreateTable, "[KTData] Creat database success.");
    return true;
  });
}

bool DbEngine::DeleteDbItem(const std::string& key, DbContent& content) {
  return DeleteRows("sumId", key, content, kDeleteDbItem);
}

bool DbEngine::DeleteRows(const std::string& column, const std::string& key, DbContent& content, const char* function) {
  return WithDatabase(content, "[KTData] Delete database item filed:", function, [&](SQLite::Database& database) {
    if (KeyedStatement(database, "DELETE FROM ", content.tableName, column, key).Sql().exec() < 1) {
      LogProgress(function, "[KTData] Delete item 0");
    }
    return true;
  });
}

}  // namespace KT
