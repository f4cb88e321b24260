#include "tests/apps/recovery/RecoveryTest.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <functional>

#include "apps/recovery/DatabaseImage.h"
#include "apps/recovery/MemoryFiles.h"
#include "tests/support/FaultVfs.h"

namespace {

constexpr const char* kCreate =
    "CREATE TABLE PEER_DEVICE(id INTEGER PRIMARY KEY AUTOINCREMENT, udId TEXT NOT NULL, sumId TEXT NOT NULL)";

// 2026-11-21 01:23:45.678 UTC, in milliseconds since 1970: 20778 days, 5025 s and 678 ms.
constexpr long long kNow = 20778LL * 86'400'000 + 5025LL * 1000 + 678;

std::string Utf8(const std::filesystem::path& path) {
  const std::u8string name = path.u8string();
  return {name.begin(), name.end()};
}

void Insert(SQLite::Database& database, const std::string& sumId) {
  SQLite::Statement insert(database, "INSERT INTO PEER_DEVICE (udId, sumId) VALUES ('udId', ?)");
  insert.bind(1, sumId);
  insert.exec();
}

}  // namespace

std::string PeerDatabase(const std::string& sumId) {
  KT::MemoryFiles files;
  {
    SQLite::Database database("peer", SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE, 0, files.VfsName().c_str());
    database.exec(kCreate);
    Insert(database, sumId);
  }
  return files.files.at("peer");
}

std::string JournalHeader(unsigned char pagesBefore) {
  std::string header("\xd9\xd5\x05\xf9\x20\xa1\x63\xd7", 8);
  header += std::string("\xff\xff\xff\xff\x12\x34\x56\x78\0\0\0", 11);
  header += static_cast<char>(pagesBefore);
  header += std::string("\0\0\x02\0\0\0\x10\0", 8);  // sectors of 512 bytes, pages of 4096
  header.resize(512);
  return header;
}

HotDatabase HalfChangedPeerDatabase() {
  const support::ConsoleProfile scratch;
  scratch.MakeDatabaseFolder();
  const auto file = scratch.NativeFile("hot.db");
  support::WriteBytes(file, PeerDatabase("old"));
  HotDatabase hot;
  support::FaultVfs vfs;
  vfs.SetListener([&](const std::string& event) {
    if (event == "delete journal") {
      hot = {support::ReadBytes(file), support::ReadBytes(scratch.NativeFile("hot.db-journal"))};
    }
  });
  SQLite::Database database(Utf8(file), SQLite::OPEN_READWRITE);
  database.exec("UPDATE PEER_DEVICE SET sumId = 'half'");
  return hot;
}

Prints PrintsOf(const std::map<std::string, std::string>& bytesByName) {
  Prints prints;
  for (const auto& [name, bytes] : bytesByName) {
    prints[name] = std::to_string(bytes.size()) + " bytes, hash " + std::to_string(std::hash<std::string>()(bytes));
  }
  return prints;
}

std::map<std::string, std::string> RecoveryTest::Content() const {
  std::map<std::string, std::string> content;
  for (const auto& entry : std::filesystem::directory_iterator(Native(""))) {
    content[Utf8(entry.path().filename())] = support::ReadBytes(entry.path());
  }
  return content;
}

std::optional<std::string> RecoveryTest::Repair() {
  using std::chrono::milliseconds;
  const KT::RepairHooks hooks{
      [this](milliseconds time) { sleptMilliseconds_.push_back(time.count()); },
      [] { return std::chrono::system_clock::time_point(milliseconds(kNow)); },
      [this](const std::string& text, bool isLoss) { told_.push_back((isLoss ? "LOSS " : "") + text); }};
  return KT::RepairStore(Folder(), hooks, anyLoss_);
}
