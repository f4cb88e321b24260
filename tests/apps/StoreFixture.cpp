#include "tests/apps/StoreFixture.h"

#include <SQLiteCpp/Database.h>

#include <filesystem>
#include <sstream>

#include "apps/marnockctl/Commands.h"
#include "apps/recovery/MemoryFiles.h"
#include "apps/recovery/StoreFile.h"

namespace support {

std::string DatabaseMadeBy(const std::string& sql) {
  KT::MemoryFiles files;
  SQLite::Database("file", SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE, 0, files.VfsName().c_str()).exec(sql);
  return files.files.at("file");
}

std::string PeerDatabase(int count) {
  std::string sql =
      "CREATE TABLE PEER_DEVICE(id INTEGER PRIMARY KEY AUTOINCREMENT, udId TEXT NOT NULL, sumId TEXT NOT NULL);";
  for (int i = 1; i <= count; ++i) {
    sql += "INSERT INTO PEER_DEVICE (udId, sumId) VALUES ('u" + std::to_string(i) + "', 's" + std::to_string(i) + "');";
  }
  return DatabaseMadeBy(sql);
}

std::string TrustedDatabase(const std::string& devName) {
  const KT::StoreFile& file = KT::StoreFiles()[2];
  std::string definitions = "id INTEGER PRIMARY KEY AUTOINCREMENT";
  std::string values = "7";
  for (std::size_t i = 1; i < file.columns.size(); ++i) {
    const std::string& column = file.columns[i];
    definitions += ", " + column + " NOT NULL";
    values += column == "sumId" ? ", CAST(x'6bff' AS TEXT)" : column == "devName" ? ", '" + devName + "'" : ", 3";
  }
  return DatabaseMadeBy(std::string("CREATE TABLE ") + file.tableName + "(" + definitions + "); INSERT INTO " +
                        file.tableName + " VALUES (" + values + ")");
}

std::string FreshJournal() {
  // Magic number, count, nonce, no page before, sectors of 512 bytes, pages of 4096.
  std::string header("\xd9\xd5\x05\xf9\x20\xa1\x63\xd7\0\0\0\1abcd\0\0\0\0\0\0\2\0\0\0\x10\0", 28);
  header.resize(512);
  return header;
}

std::map<std::string, std::string> StoreFixture::Content() const {
  std::map<std::string, std::string> content;
  for (const auto& entry : std::filesystem::directory_iterator(profile_.NativeFile(""))) {
    const std::u8string name = entry.path().filename().u8string();
    content[std::string(name.begin(), name.end())] = ReadBytes(entry.path());
  }
  return content;
}

KT::ExitStatus StoreFixture::Tool(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "marnockctl");
  std::ostringstream outStream;
  std::ostringstream errStream;
  const KT::ExitStatus status = KT::RunMarnockctl(std::move(arguments), outStream, errStream, pipeName);
  out = outStream.str();
  err = errStream.str();
  return status;
}

}  // namespace support
