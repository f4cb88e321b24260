// What one table engine knows about its database.
#pragma once

#include <memory>
#include <string>

namespace SQLite {
class Database;
}

namespace KT {

// Filled by the engine's Init but for the last two fields, which DbEngine::InitDb fills.
struct DbContent {
  DbContent();
  ~DbContent();

  std::string keyColumn;
  std::string tableName;
  std::wstring dirPath;  // folder of the disk file below the user's profile, a backslash at both ends
  std::string fileName;
  std::string filePath;                            // full Windows path of the disk file in UTF-8
  std::unique_ptr<SQLite::Database> dbContentPtr;  // the database in memory; empty until InitDb
};

}  // namespace KT
