#include "persistence/PeerDeviceDbEngine.h"

#include "tests/persistence/EngineTest.h"
#include "tests/support/SqlTrace.h"

namespace {

constexpr const char* kFile = "PeerDeviceInfo1G12NJ9DS39D.db";
constexpr const char* kAllPeers = "SELECT * FROM PEER_DEVICE";

class PeerDeviceDbEngine : public EngineTest {
 protected:
  PeerDeviceDbEngine() {
    log_.Take();
    statements_.clear();
  }

  Lines Peers() { return Rows(*engine_.Content().dbContentPtr, kAllPeers); }
  void DropTable() { engine_.Content().dbContentPtr->exec("DROP TABLE PEER_DEVICE"); }

  Lines statements_;
  support::SqlTrace trace_{[this](const std::string& text) { statements_.push_back(text); }};
  KT::PeerDeviceDbEngine engine_;
};

TEST_F(PeerDeviceDbEngine, DescribesItsDatabase) {
  const KT::DbContent& content = engine_.Content();
  EXPECT_EQ(content.keyColumn, "udId");
  EXPECT_EQ(content.tableName, "PEER_DEVICE");
  EXPECT_EQ(content.dirPath, L"\\Orvnta\\DeviceMgr\\");
  EXPECT_EQ(content.fileName, kFile);
  EXPECT_EQ(content.filePath, profile_.File(kFile));
}

TEST_F(PeerDeviceDbEngine, MakesItsTable) {
  EXPECT_TRUE(engine_.CreateTable(engine_.Content()));
  EXPECT_EQ(statements_, (Lines{"BEGIN",
                                "CREATE TABLE IF NOT EXISTS PEER_DEVICE(id INTEGER PRIMARY KEY AUTOINCREMENT, "
                                "udId TEXT NOT NULL, sumId TEXT NOT NULL);",
                                "COMMIT"}));
  EXPECT_EQ(Rows(*engine_.Content().dbContentPtr, "SELECT sql FROM sqlite_master WHERE name = 'PEER_DEVICE'"),
            Lines{"CREATE TABLE PEER_DEVICE(id INTEGER PRIMARY KEY AUTOINCREMENT, udId TEXT NOT NULL, "
                  "sumId TEXT NOT NULL)"});
}

TEST_F(PeerDeviceDbEngine, InitFailsWithALineOfItsOwn) {
  system_.Fail(support::SystemCall::CreateDirectories, 1);
  std::filesystem::remove_all(profile_.NativeRoot());

  EXPECT_FALSE(engine_.Init());

  EXPECT_EQ(log_.Lines(), (Lines{"4 [KTData] Create directory failed.(KT::Utils::CreateDir)",
                                 "4 [KTData] Init peer device database failed.(KT::PeerDeviceDbEngine::Init)"}));
}

TEST_F(PeerDeviceDbEngine, AddsRowsAsText) {
  EXPECT_TRUE(engine_.AddPeerDevice("u1", "s1"));
  EXPECT_TRUE(engine_.AddPeerDevice("2", "3"));

  EXPECT_EQ(Peers(), (Lines{"1|u1|s1", "2|2|3"}));
  EXPECT_EQ(Rows(*engine_.Content().dbContentPtr, "SELECT typeof(udId), typeof(sumId) FROM PEER_DEVICE"),
            (Lines{"text|text", "text|text"}));
  EXPECT_EQ(statements_.at(0), "INSERT INTO PEER_DEVICE (udId, sumId) VALUES(? , ?)");
  EXPECT_EQ(log_.Lines(), Lines{});
}

TEST_F(PeerDeviceDbEngine, AddsKeysOfAnyBytes) {
  const std::string udId("o'b\0r \xff", 7);
  EXPECT_TRUE(engine_.AddPeerDevice(udId, ""));
  EXPECT_EQ(Peers(), Lines{"1|" + udId + "|"});
}

TEST_F(PeerDeviceDbEngine, LogsAnAddThatFails) {
  DropTable();
  EXPECT_FALSE(engine_.AddPeerDevice("u1", "s1"));
  EXPECT_EQ(log_.Lines(), Lines{"4 [KTData] Add peer device failed:no such table: PEER_DEVICE"
                                "(KT::PeerDeviceDbEngine::AddPeerDevice)"});
}

TEST_F(PeerDeviceDbEngine, DeletesEveryRowOfTheKey) {
  engine_.AddPeerDevice("u1", "s1");
  engine_.AddPeerDevice("u2", "u1");
  engine_.AddPeerDevice("u1", "s3");
  statements_.clear();

  EXPECT_TRUE(engine_.DeletePeerDevice("u1"));

  EXPECT_EQ(Peers(), Lines{"2|u2|u1"});
  EXPECT_EQ(statements_.at(0), "DELETE FROM PEER_DEVICE WHERE udId = 'u1';");
  EXPECT_EQ(log_.Lines(), Lines{"3 [KTData] Delete peer device.(KT::PeerDeviceDbEngine::DeletePeerDevice)"});
}

TEST_F(PeerDeviceDbEngine, DeletesNothingWithoutFailing) {
  EXPECT_TRUE(engine_.DeletePeerDevice("u1"));
  EXPECT_EQ(log_.Lines(), (Lines{"3 [KTData] Delete peer device.(KT::PeerDeviceDbEngine::DeletePeerDevice)",
                                 "3 [KTData] Delete item 0(KT::PeerDeviceDbEngine::DeletePeerDevice)"}));
}

TEST_F(PeerDeviceDbEngine, FailsToDeleteAKeyWithAQuote) {
  EXPECT_FALSE(engine_.DeletePeerDevice("o'brien"));
  EXPECT_EQ(log_.Lines(), (Lines{"3 [KTData] Delete peer device.(KT::PeerDeviceDbEngine::DeletePeerDevice)",
                                 "4 [KTData] Delete database item filed:near \"brien\": syntax error"
                                 "(KT::PeerDeviceDbEngine::DeletePeerDevice)"}));
}

TEST_F(PeerDeviceDbEngine, RunsOneStatementOfAKey) {
  engine_.AddPeerDevice("u1", "s1");
  std::string sumId;
  EXPECT_TRUE(engine_.QueryPeerDevice("u1'; DROP TABLE PEER_DEVICE; --", sumId));
  EXPECT_EQ(sumId, "s1");
  EXPECT_EQ(Peers(), Lines{"1|u1|s1"});
  EXPECT_TRUE(engine_.DeletePeerDevice("u1'; DROP TABLE PEER_DEVICE; --"));
  EXPECT_EQ(Peers(), Lines{});
}

TEST_F(PeerDeviceDbEngine, UpdatesByDeletingAndAdding) {
  engine_.AddPeerDevice("u1", "s1");
  engine_.AddPeerDevice("u1", "s2");
  log_.Take();

  EXPECT_TRUE(engine_.UpdatePeerDevice("u1", "s3"));

  EXPECT_EQ(Peers(), Lines{"3|u1|s3"}) << "the row gets a new id";
  EXPECT_EQ(log_.Lines(), Lines{"3 [KTData] Delete peer device.(KT::PeerDeviceDbEngine::DeletePeerDevice)"});
}

TEST_F(PeerDeviceDbEngine, UpdateAddsAlthoughTheDeleteFailed) {
  EXPECT_TRUE(engine_.UpdatePeerDevice("o'brien", "s1"));
  EXPECT_EQ(Peers(), Lines{"1|o'brien|s1"});
}

TEST_F(PeerDeviceDbEngine, UpdateFailsWhenTheAddFails) {
  DropTable();
  EXPECT_FALSE(engine_.UpdatePeerDevice("u1", "s1"));
}

TEST_F(PeerDeviceDbEngine, FindsTheLastRowOfAKey) {
  engine_.AddPeerDevice("u1", "s1");
  engine_.AddPeerDevice("u2", "s2");
  engine_.AddPeerDevice("u1", "s3");
  statements_.clear();
  std::string sumId = "before";

  EXPECT_TRUE(engine_.QueryPeerDevice("u1", sumId));

  EXPECT_EQ(sumId, "s3");
  EXPECT_EQ(statements_, Lines{"SELECT * FROM PEER_DEVICE WHERE udId = 'u1';"});
}

TEST_F(PeerDeviceDbEngine, LeavesTheOutputForAKeyThatIsNotThere) {
  std::string sumId = "before";
  EXPECT_TRUE(engine_.QueryPeerDevice("u1", sumId));
  EXPECT_EQ(sumId, "before");
  EXPECT_EQ(log_.Lines(), Lines{});
}

TEST_F(PeerDeviceDbEngine, FailsToFindAKeyWithAQuote) {
  std::string sumId = "before";
  EXPECT_FALSE(engine_.QueryPeerDevice("o'brien", sumId));
  EXPECT_EQ(sumId, "before");
  EXPECT_EQ(log_.Lines(), Lines{"4 [KTData] Get peer device failed:near \"brien\": syntax error"
                                "(KT::PeerDeviceDbEngine::QueryPeerDevice)"});
}

TEST_F(PeerDeviceDbEngine, FindsColumnsByName) {
  DropTable();
  engine_.Content().dbContentPtr->exec(
      "CREATE TABLE PEER_DEVICE (sumId, more, udId); INSERT INTO PEER_DEVICE VALUES ('s1', 'x', 'u1')");
  std::string sumId;
  EXPECT_TRUE(engine_.QueryPeerDevice("u1", sumId));
  EXPECT_EQ(sumId, "s1");
}

TEST_F(PeerDeviceDbEngine, FailsWithoutTheColumn) {
  DropTable();
  engine_.Content().dbContentPtr->exec("CREATE TABLE PEER_DEVICE (udId); INSERT INTO PEER_DEVICE VALUES ('u1')");
  std::string sumId;
  EXPECT_FALSE(engine_.QueryPeerDevice("u1", sumId));
  EXPECT_EQ(log_.Lines(), Lines{"4 [KTData] Get peer device failed:Unknown column name."
                                "(KT::PeerDeviceDbEngine::QueryPeerDevice)"});
}

TEST_F(PeerDeviceDbEngine, EveryOperationNeedsAnOpenDatabase) {
  engine_.Content().dbContentPtr.reset();
  std::string sumId = "before";

  EXPECT_FALSE(engine_.AddPeerDevice("u1", "s1"));
  EXPECT_FALSE(engine_.DeletePeerDevice("u1"));
  EXPECT_FALSE(engine_.UpdatePeerDevice("u1", "s1"));
  EXPECT_FALSE(engine_.QueryPeerDevice("u1", sumId));

  EXPECT_EQ(sumId, "before");
  EXPECT_EQ(log_.Lines(), (Lines{"4 [KTData] dbContentPtr is nullptr.(KT::PeerDeviceDbEngine::AddPeerDevice)",
                                 "4 [KTData] dbContentPtr is nullptr.(KT::PeerDeviceDbEngine::DeletePeerDevice)",
                                 "4 [KTData] dbContentPtr is nullptr.(KT::PeerDeviceDbEngine::UpdatePeerDevice)",
                                 "4 [KTData] dbContentPtr is nullptr.(KT::PeerDeviceDbEngine::QueryPeerDevice)"}));
}

}  // namespace
