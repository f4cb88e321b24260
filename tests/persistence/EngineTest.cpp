#include "tests/persistence/EngineTest.h"

#include <SQLiteCpp/Statement.h>

#include <algorithm>

namespace {

std::string Utf8(const std::filesystem::path& path) {
  const std::u8string name = path.u8string();
  return {name.begin(), name.end()};
}

}  // namespace

Lines Rows(SQLite::Database& database, const std::string& sql) {
  Lines rows;
  SQLite::Statement select(database, sql);
  while (select.executeStep()) {
    std::string row;
    for (int column = 0; column < select.getColumnCount(); ++column) {
      row += (column == 0 ? "" : "|") + select.getColumn(column).getString();
    }
    rows.push_back(row);
  }
  return rows;
}

SQLite::Database OpenNative(const std::filesystem::path& file) {
  return SQLite::Database(Utf8(file), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
}

Lines RowsOfFile(const std::filesystem::path& file, const std::string& sql) {
  SQLite::Database database = OpenNative(file);
  return Rows(database, sql);
}

void RunOnFile(const std::filesystem::path& file, const std::string& sql) { OpenNative(file).exec(sql); }

Lines EngineTest::Files() const {
  Lines names;
  for (const auto& entry : std::filesystem::directory_iterator(Native(""))) {
    names.push_back(Utf8(entry.path().filename()));
  }
  std::sort(names.begin(), names.end());
  return names;
}

NotesEngine::NotesEngine() {
  content.keyColumn = "sumId";
  content.tableName = "notes";
  content.dirPath = L"\\Orvnta\\DeviceMgr\\";
  content.fileName = kNotesFile;
}

void NotesEngine::Add(const std::string& sumId, const std::string& note) {
  SQLite::Statement insert(*content.dbContentPtr, "INSERT INTO notes (sumId, note) VALUES (?, ?)");
  insert.bind(1, sumId);
  insert.bind(2, note);
  insert.exec();
}

Lines NotesEngine::Notes() { return Rows(*content.dbContentPtr, kAllNotes); }
