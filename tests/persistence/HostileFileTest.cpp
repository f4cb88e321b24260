// Files that hold more than a table: what of it comes to life when they are loaded.
#include <algorithm>
#include <optional>

#include "persistence/PeerDeviceDbEngine.h"
#include "tests/persistence/EngineTest.h"

namespace {

constexpr const char* kFile = "PeerDeviceInfo1G12NJ9DS39D.db";
constexpr const char* kTable =
    "CREATE TABLE PEER_DEVICE(id INTEGER PRIMARY KEY AUTOINCREMENT, udId TEXT NOT NULL, sumId TEXT NOT NULL);";
constexpr const char* kAllPeers = "SELECT udId, sumId FROM PEER_DEVICE ORDER BY id";

class HostileFile : public EngineTest {
 protected:
  // An engine that has loaded a file made by `sql`.
  KT::PeerDeviceDbEngine& Load(const std::string& sql) {
    profile_.MakeDatabaseFolder();
    RunOnFile(Native(kFile), sql);
    return engine_.emplace();
  }

  Lines Peers() { return Rows(*engine_->Content().dbContentPtr, kAllPeers); }

  bool Logged(const std::string& part) const {
    const Lines lines = log_.Lines();
    return std::any_of(lines.begin(), lines.end(),
                       [&](const std::string& line) { return line.find(part) != std::string::npos; });
  }

  std::optional<KT::PeerDeviceDbEngine> engine_;
};

TEST_F(HostileFile, MayHoldATriggerThatRunsWhenARowIsAdded) {
  auto& engine = Load(std::string(kTable) +
                      "CREATE TRIGGER twice AFTER INSERT ON PEER_DEVICE BEGIN "
                      "INSERT INTO PEER_DEVICE(udId, sumId) VALUES('by', 'trigger'); END");
  EXPECT_TRUE(engine.AddPeerDevice("a", "1"));
  EXPECT_EQ(Peers(), (Lines{"a|1", "by|trigger"}));
}

TEST_F(HostileFile, GetsNoTriggerToReachAnotherTableWhenAKeyIsDeleted) {
  auto& engine = Load(std::string(kTable) +
                      "CREATE TABLE other(x); INSERT INTO PEER_DEVICE(udId, sumId) VALUES('a', '1');"
                      "CREATE TRIGGER reach AFTER DELETE ON PEER_DEVICE BEGIN INSERT INTO other VALUES(1); END");
  EXPECT_FALSE(engine.DeletePeerDevice("a"));
  EXPECT_TRUE(Logged("[KTData] Delete database item filed:not authorized"));
  EXPECT_EQ(Peers(), Lines{"a|1"});
}

TEST_F(HostileFile, WithAViewInTheTablesPlaceShowsNothingOfWhatIsBehindIt) {
  auto& engine = Load(
      "CREATE TABLE behind(id, udId, sumId); INSERT INTO behind VALUES(1, 'a', 'secret');"
      "CREATE VIEW PEER_DEVICE AS SELECT * FROM behind");
  std::string sumId = "untouched";
  EXPECT_FALSE(engine.QueryPeerDevice("a", sumId));
  EXPECT_EQ(sumId, "untouched");
  EXPECT_TRUE(Logged("is prohibited"));
  EXPECT_FALSE(engine.AddPeerDevice("b", "2"));
}

TEST_F(HostileFile, MayNameItsTableAndColumnsInAnyCaseAndHaveAnIndex) {
  auto& engine = Load(
      "CREATE TABLE peer_device(id INTEGER PRIMARY KEY, UDID TEXT, sumId TEXT);"
      "CREATE INDEX quick ON peer_device(UDID); INSERT INTO peer_device VALUES(1, 'a', '1')");
  std::string sumId;
  EXPECT_TRUE(engine.QueryPeerDevice("a", sumId));
  EXPECT_EQ(sumId, "1");
  EXPECT_TRUE(engine.DeletePeerDevice("a"));
  EXPECT_EQ(Peers(), Lines());
}

}  // namespace
