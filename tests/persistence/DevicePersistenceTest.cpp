#include "persistence/DevicePersistence.h"

#include <functional>
#include <memory>

#include "tests/persistence/EngineTest.h"
#include "tests/persistence/TapDeviceSamples.h"

namespace {

constexpr const char* kPeerFile = "PeerDeviceInfo1G12NJ9DS39D.db";
constexpr const char* kCurrentFile = "CurrentZentapDeviceInfo1G12NJ9DS39D.db";
constexpr const char* kTrustedFile = "TrustedZentapDeviceInfo2G12NJ9DS39D.db";
constexpr const char* kBareFile = "G12NJ9DS39D.db";

constexpr const char* kPeers = "SELECT udId, sumId FROM PEER_DEVICE";
constexpr const char* kCurrents = "SELECT sumId, devName FROM currZentapDeviceInfo";
constexpr const char* kTrusteds = "SELECT sumId, devName FROM trustedZentapDeviceInfo";

const std::string kSaved = "3 [KTData] Save database success.(KT::DbEngine::SaveDbIntoDisk)";
const std::string kTrustedSave =
    "3 [KTData] Save zentap database into disk.(KT::TrustedZentapDbEngine::SaveZentapDbIntoDisk)";

BluetoothDeviceSummary NamedTrusted(const std::string& name, const std::string& summary = "") {
  BluetoothDeviceSummary device;
  device.devName = name;
  device.summary = summary;
  return device;
}

CurrZentapDeviceInfo NamedCurrent(const std::string& name, const std::string& summary = "") {
  CurrZentapDeviceInfo device;
  device.devName = name;
  device.summary = summary;
  return device;
}

class DevicePersistence : public EngineTest {
 protected:
  void Start() {
    store_ = std::make_unique<KT::DevicePersistence>();
    log_.Take();
    system_.ClearCalls();
  }

  void StartWithoutTables() {
    profile_.MakeDatabaseFolder();
    for (const char* const file : {kPeerFile, kCurrentFile, kTrustedFile}) {
      RunOnFile(Native(file), "CREATE TABLE other (x)");
    }
    Start();
  }

  bool IsSaved(const char* file) { return std::filesystem::exists(Native(file)); }

  std::unique_ptr<KT::DevicePersistence> store_;
};

TEST_F(DevicePersistence, BringsUpPeerCurrentAndTrustedInThatOrder) {
  KT::DevicePersistence store;

  const Lines once{"3 [KTData] Creat database success.(KT::DbEngine::CreateTable)",
                   "3 [KTData] Init database success.(KT::DbEngine::InitDb)"};
  Lines thrice;
  for (int engine = 0; engine < 3; ++engine) {
    thrice.insert(thrice.end(), once.begin(), once.end());
  }
  EXPECT_EQ(log_.Lines(), thrice);
  Lines searched;
  for (const std::string& call : system_.Calls()) {
    if (call.starts_with("GetFileAttributesW")) searched.push_back(call);
  }
  EXPECT_EQ(searched, (Lines{"GetFileAttributesW(" + profile_.File(kPeerFile) + ")",
                             "GetFileAttributesW(" + profile_.File(kCurrentFile) + ")",
                             "GetFileAttributesW(" + profile_.File(kTrustedFile) + ")"}));
  EXPECT_EQ(Files(), Lines{});
}

TEST_F(DevicePersistence, SavesPeerTrustedAndCurrentAtItsEnd) {
  Start();
  store_.reset();

  EXPECT_EQ(log_.Lines(), (Lines{kSaved, kTrustedSave, kSaved, kSaved}));
  EXPECT_EQ(system_.Calls(), (Lines{"GetFileAttributesW(" + profile_.File(kPeerFile) + ")",
                                    "SqliteFileName(" + profile_.File(kPeerFile) + ")",
                                    "GetFileAttributesW(" + profile_.File(kTrustedFile) + ")",
                                    "SqliteFileName(" + profile_.File(kTrustedFile) + ")",
                                    "GetFileAttributesW(" + profile_.File(kCurrentFile) + ")",
                                    "SqliteFileName(" + profile_.File(kCurrentFile) + ")"}));
  EXPECT_EQ(Files(), (Lines{kCurrentFile, kPeerFile, kTrustedFile}));
}

TEST_F(DevicePersistence, LivesWithEnginesThatDidNotComeUp) {
  system_.samName.clear();
  system_.Fail(support::SystemCall::CloseHandle, 1, 6);
  store_ = std::make_unique<KT::DevicePersistence>();

  const std::string noUser = "4 [KTData] Get current username failed:6(KT::Utils::GetCurrUserDefinePath)";
  EXPECT_EQ(log_.Take(), (Lines{noUser, "4 [KTData] Init peer device database failed.(KT::PeerDeviceDbEngine::Init)",
                                noUser, "4 [KTData] Init database failed.(KT::CurrZentapDbEngine::Init)", noUser,
                                "4 [KTData] Init database failed.(KT::TrustedZentapDbEngine::Init)"}));
  EXPECT_EQ(store_->SetPeerDevice("u", "s"), -4996);
  log_.Take();

  store_.reset();
  const std::string notOpen = "4 [KTData] dbContentPtr is nullptr.";
  EXPECT_EQ(log_.Lines(), (Lines{notOpen + "(KT::DbEngine::SaveDbIntoDisk)",
                                 notOpen + "(KT::TrustedZentapDbEngine::SaveZentapDbIntoDisk)",
                                 notOpen + "(KT::DbEngine::SaveDbIntoDisk)"}));
}

TEST_F(DevicePersistence, KeepsEverythingOverARestart) {
  Start();
  EXPECT_EQ(store_->SetTrustedZentapDeviceInfo("t", SampleTrusted()), 0);
  EXPECT_EQ(store_->SetCurrZentapDeviceInfo("c", SampleCurrent()), 0);
  EXPECT_EQ(store_->SetPeerDevice("u", "s"), 0);
  store_.reset();
  Start();

  BluetoothDeviceSummary trusted;
  CurrZentapDeviceInfo current;
  std::string sumId;
  EXPECT_EQ(store_->GetTrustedZentapDeviceInfo("t", trusted), 0);
  EXPECT_EQ(store_->GetCurrZentapDeviceInfo("c", current), 0);
  EXPECT_EQ(store_->GetPeerDevice("u", sumId), 0);
  EXPECT_EQ(trusted, SampleTrustedReadBack());
  EXPECT_EQ(current, SampleCurrentReadBack());
  EXPECT_EQ(sumId, "s");
}

TEST_F(DevicePersistence, SetTrustedReplacesTheRowAndSaves) {
  Start();
  store_->SetTrustedZentapDeviceInfo("t", NamedTrusted("old"));
  log_.Take();

  EXPECT_EQ(store_->SetTrustedZentapDeviceInfo("t", NamedTrusted("new")), 0);

  EXPECT_EQ(RowsOfFile(Native(kTrustedFile), kTrusteds), Lines{"t|new"});
  EXPECT_EQ(log_.Lines(), (Lines{"3 [KTData] Delete zentap device.(KT::TrustedZentapDbEngine::DeleteZentapDeviceInfo)",
                                 kTrustedSave, kSaved}));
  EXPECT_EQ(Files(), Lines{kTrustedFile}) << "only the engine concerned is saved";
}

TEST_F(DevicePersistence, SetCurrentReplacesTheRowAndSaves) {
  Start();
  store_->SetCurrZentapDeviceInfo("c", NamedCurrent("old"));
  log_.Take();

  EXPECT_EQ(store_->SetCurrZentapDeviceInfo("c", NamedCurrent("new")), 0);

  EXPECT_EQ(RowsOfFile(Native(kCurrentFile), kCurrents), Lines{"c|new"});
  EXPECT_EQ(log_.Lines(),
            (Lines{"3 [KTData] Delete zentap device.(KT::CurrZentapDbEngine::DeleteZentapDeviceInfo)", kSaved}));
  EXPECT_EQ(Files(), Lines{kCurrentFile});
}

TEST_F(DevicePersistence, SetPeerReplacesTheRowAndSaves) {
  Start();
  store_->SetPeerDevice("u", "old");
  log_.Take();

  EXPECT_EQ(store_->SetPeerDevice("u", "new"), 0);

  EXPECT_EQ(RowsOfFile(Native(kPeerFile), kPeers), Lines{"u|new"});
  EXPECT_EQ(log_.Lines(), (Lines{"3 [KTData] Delete peer device.(KT::PeerDeviceDbEngine::DeletePeerDevice)", kSaved}));
  EXPECT_EQ(Files(), Lines{kPeerFile});
}

TEST_F(DevicePersistence, SetGoesOnAfterADeleteThatFails) {
  Start();
  EXPECT_EQ(store_->SetTrustedZentapDeviceInfo("o'brien", NamedTrusted("t")), 0);
  EXPECT_EQ(store_->SetCurrZentapDeviceInfo("o'brien", NamedCurrent("c")), 0);
  EXPECT_EQ(store_->SetPeerDevice("o'brien", "p"), 0);

  EXPECT_EQ(RowsOfFile(Native(kTrustedFile), kTrusteds), Lines{"o'brien|t"});
  EXPECT_EQ(RowsOfFile(Native(kCurrentFile), kCurrents), Lines{"o'brien|c"});
  EXPECT_EQ(RowsOfFile(Native(kPeerFile), kPeers), Lines{"o'brien|p"});
}

TEST_F(DevicePersistence, SetListsStoreUnderSumIdAndSave) {
  Start();
  EXPECT_EQ(store_->SetTrustedZentapDeviceInfoList({NamedTrusted("t1", "s1"), NamedTrusted("t2", "s2")}), 0);
  EXPECT_EQ(store_->SetCurrZentapDeviceInfoList({NamedCurrent("c1", "s1")}), 0);

  EXPECT_EQ(RowsOfFile(Native(kTrustedFile), kTrusteds), (Lines{"sumId|t1", "sumId|t2"}));
  EXPECT_EQ(RowsOfFile(Native(kCurrentFile), kCurrents), Lines{"sumId|c1"});
}

TEST_F(DevicePersistence, EmptySetListsSaveToo) {
  Start();
  EXPECT_EQ(store_->SetTrustedZentapDeviceInfoList({}), 0);
  EXPECT_EQ(store_->SetCurrZentapDeviceInfoList({}), 0);
  EXPECT_EQ(Files(), (Lines{kCurrentFile, kTrustedFile}));
}

TEST_F(DevicePersistence, DeletesSave) {
  Start();
  store_->SetTrustedZentapDeviceInfo("t", {});
  store_->SetCurrZentapDeviceInfo("c", {});
  store_->SetPeerDevice("u", "s");

  EXPECT_EQ(store_->DeleteTrustedZentapDeviceInfo("t"), 0);
  EXPECT_EQ(store_->DeleteCurrZentapDeviceInfo("c"), 0);
  EXPECT_EQ(store_->DeletePeerDevice("u"), 0);

  EXPECT_EQ(RowsOfFile(Native(kTrustedFile), kTrusteds), Lines{});
  EXPECT_EQ(RowsOfFile(Native(kCurrentFile), kCurrents), Lines{});
  EXPECT_EQ(RowsOfFile(Native(kPeerFile), kPeers), Lines{});
}

TEST_F(DevicePersistence, DeletesOfUnknownKeysSucceedAndSave) {
  Start();
  EXPECT_EQ(store_->DeleteTrustedZentapDeviceInfo("t"), 0);
  EXPECT_TRUE(IsSaved(kTrustedFile));
  EXPECT_EQ(store_->DeleteCurrZentapDeviceInfo("c"), 0);
  EXPECT_TRUE(IsSaved(kCurrentFile));
  EXPECT_EQ(store_->DeletePeerDevice("u"), 0);
  EXPECT_TRUE(IsSaved(kPeerFile));
}

TEST_F(DevicePersistence, GetsOfUnknownKeysSucceedAndLeaveTheOutput) {
  Start();
  BluetoothDeviceSummary trusted = SampleTrusted();
  CurrZentapDeviceInfo current = SampleCurrent();
  std::string sumId = "before";

  EXPECT_EQ(store_->GetTrustedZentapDeviceInfo("t", trusted), 0);
  EXPECT_EQ(store_->GetCurrZentapDeviceInfo("c", current), 0);
  EXPECT_EQ(store_->GetPeerDevice("u", sumId), 0);

  EXPECT_EQ(trusted, SampleTrusted());
  EXPECT_EQ(current, SampleCurrent());
  EXPECT_EQ(sumId, "before");
  EXPECT_EQ(Files(), Lines{}) << "reading saves nothing";
  EXPECT_EQ(log_.Lines(), Lines{});
}

TEST_F(DevicePersistence, GetListsGiveEveryRow) {
  Start();
  store_->SetTrustedZentapDeviceInfo("t1", NamedTrusted("one"));
  store_->SetTrustedZentapDeviceInfo("t2", NamedTrusted("two"));
  store_->SetCurrZentapDeviceInfo("c1", NamedCurrent("three"));
  std::vector<BluetoothDeviceSummary> trusted;
  std::vector<CurrZentapDeviceInfo> current;

  EXPECT_EQ(store_->GetTrustedZentapDeviceInfoList(trusted), 0);
  EXPECT_EQ(store_->GetCurrZentapDeviceInfoList(current), 0);

  EXPECT_EQ(trusted, (std::vector{NamedTrusted("one"), NamedTrusted("two")}));
  EXPECT_EQ(current, std::vector{NamedCurrent("three")});
}

struct FailureCase {
  const char* operation;
  const char* message;
  int code;
  std::function<int(KT::DevicePersistence&)> run;
};

// Every operation on tables that are not there.
const FailureCase kFailures[] = {
    {"SetTrustedZentapDeviceInfo", "Set zentap device info failed.", -4999,
     [](auto& store) { return store.SetTrustedZentapDeviceInfo("k", {}); }},
    {"SetTrustedZentapDeviceInfoList", "Set zentap device list info failed.", -4999,
     [](auto& store) { return store.SetTrustedZentapDeviceInfoList(std::vector<BluetoothDeviceSummary>(1)); }},
    {"DeleteTrustedZentapDeviceInfo", "Delete zentap device info failed.", -4999,
     [](auto& store) { return store.DeleteTrustedZentapDeviceInfo("k"); }},
    {"GetTrustedZentapDeviceInfo", "Get zentap device info failed.", -4996,
     [](auto& store) {
       BluetoothDeviceSummary info;
       return store.GetTrustedZentapDeviceInfo("k", info);
     }},
    {"GetTrustedZentapDeviceInfoList", "Get zentap device list info failed.", -4996,
     [](auto& store) {
       std::vector<BluetoothDeviceSummary> list;
       return store.GetTrustedZentapDeviceInfoList(list);
     }},
    {"SetCurrZentapDeviceInfo", "Set curr zentap device info failed.", -4999,
     [](auto& store) { return store.SetCurrZentapDeviceInfo("k", {}); }},
    {"SetCurrZentapDeviceInfoList", "Set curr zentap device list info failed.", -4999,
     [](auto& store) { return store.SetCurrZentapDeviceInfoList(std::vector<CurrZentapDeviceInfo>(1)); }},
    {"DeleteCurrZentapDeviceInfo", "Delete curr zentap device info failed.", -4999,
     [](auto& store) { return store.DeleteCurrZentapDeviceInfo("k"); }},
    {"GetCurrZentapDeviceInfo", "Get curr zentap device info failed.", -4996,
     [](auto& store) {
       CurrZentapDeviceInfo info;
       return store.GetCurrZentapDeviceInfo("k", info);
     }},
    {"GetCurrZentapDeviceInfoList", "Get curr zentap device list info failed.", -4996,
     [](auto& store) {
       std::vector<CurrZentapDeviceInfo> list;
       return store.GetCurrZentapDeviceInfoList(list);
     }},
    {"SetPeerDevice", "Set peer device info failed.", -4996, [](auto& store) { return store.SetPeerDevice("k", "s"); }},
    {"DeletePeerDevice", "Delete peer device info failed.", -4996,
     [](auto& store) { return store.DeletePeerDevice("k"); }},
    {"GetPeerDevice", "Get peer device failed.", -4996,
     [](auto& store) {
       std::string sumId;
       return store.GetPeerDevice("k", sumId);
     }},
};

TEST_F(DevicePersistence, FailuresAreAnsweredAndLoggedAndNothingIsSaved) {
  StartWithoutTables();
  for (const FailureCase& failure : kFailures) {
    log_.Take();
    system_.ClearCalls();

    EXPECT_EQ(failure.run(*store_), failure.code) << failure.operation;

    EXPECT_EQ(log_.Lines().back(),
              std::string("4 [KTData] ") + failure.message + "(KT::DevicePersistence::" + failure.operation + ")");
    EXPECT_EQ(system_.Calls(), Lines{}) << failure.operation;
  }
}

TEST_F(DevicePersistence, ASetWhoseAddFailsLeavesTheRowDeletedInMemoryAlone) {
  Start();
  store_->SetTrustedZentapDeviceInfo("t", NamedTrusted("old"));
  store_.reset();
  RunOnFile(Native(kTrustedFile),
            "CREATE TRIGGER refuse BEFORE INSERT ON trustedZentapDeviceInfo BEGIN SELECT RAISE(ABORT, 'refused'); END");
  Start();

  EXPECT_EQ(store_->SetTrustedZentapDeviceInfo("t", NamedTrusted("new")), -4999);

  EXPECT_EQ(log_.Lines(),
            (Lines{"3 [KTData] Delete zentap device.(KT::TrustedZentapDbEngine::DeleteZentapDeviceInfo)",
                   "4 [KTData] Add zentap device failed:refused(KT::TrustedZentapDbEngine::AddZentapDeviceInfo)",
                   "4 [KTData] Set zentap device info failed.(KT::DevicePersistence::SetTrustedZentapDeviceInfo)"}));
  EXPECT_EQ(RowsOfFile(Native(kTrustedFile), kTrusteds), Lines{"t|old"});
  std::vector<BluetoothDeviceSummary> list;
  EXPECT_EQ(store_->GetTrustedZentapDeviceInfoList(list), 0);
  EXPECT_TRUE(list.empty());
  EXPECT_EQ(store_->DeleteTrustedZentapDeviceInfo("another"), 0);
  EXPECT_EQ(RowsOfFile(Native(kTrustedFile), kTrusteds), Lines{}) << "the next save takes it along";
}

TEST_F(DevicePersistence, ASaveThatFailsDoesNotChangeTheAnswer) {
  Start();
  std::filesystem::remove_all(profile_.NativeRoot());

  EXPECT_EQ(store_->SetTrustedZentapDeviceInfo("t", {}), 0);
  EXPECT_EQ(store_->SetTrustedZentapDeviceInfoList({}), 0);
  EXPECT_EQ(store_->DeleteTrustedZentapDeviceInfo("t"), 0);
  EXPECT_EQ(store_->SetCurrZentapDeviceInfo("c", {}), 0);
  EXPECT_EQ(store_->SetCurrZentapDeviceInfoList({}), 0);
  EXPECT_EQ(store_->DeleteCurrZentapDeviceInfo("c"), 0);
  EXPECT_EQ(store_->SetPeerDevice("u", "s"), 0);
  log_.Take();
  EXPECT_EQ(store_->DeletePeerDevice("u"), 0);

  EXPECT_EQ(log_.Lines(),
            (Lines{"3 [KTData] Delete peer device.(KT::PeerDeviceDbEngine::DeletePeerDevice)",
                   "4 [KTData] Save database filed:unable to open database file(KT::DbEngine::SaveDbIntoDisk)"}));
}

TEST_F(DevicePersistence, AnUnreadableFileIsReplacedAtTheEndByWhatIsInMemory) {
  profile_.MakeDatabaseFolder();
  support::WriteBytes(Native(kPeerFile), std::string(5000, 'x'));
  Start();
  EXPECT_EQ(store_->SetPeerDevice("u", "s"), -4996);
  EXPECT_EQ(support::ReadBytes(Native(kPeerFile)), std::string(5000, 'x'));

  store_.reset();
  EXPECT_EQ(RowsOfFile(Native(kPeerFile), "SELECT name FROM sqlite_master"), Lines{});
}

TEST_F(DevicePersistence, TheBareFileDoesNotExistBesideTheEnginesFilesAlone) {
  Start();
  EXPECT_FALSE(store_->IsDeviceDbExist());
  store_.reset();
  Start();
  EXPECT_EQ(Files().size(), 3U);
  EXPECT_FALSE(store_->IsDeviceDbExist());
  EXPECT_EQ(system_.Calls().back(), "GetFileAttributesW(" + profile_.File(kBareFile) + ")");
}

TEST_F(DevicePersistence, TheBareFileExistsEvenWhenItIsEmpty) {
  Start();
  support::WriteBytes(Native(kBareFile), "");
  EXPECT_TRUE(store_->IsDeviceDbExist());
}

TEST_F(DevicePersistence, ADirectoryIsNotTheBareFile) {
  Start();
  std::filesystem::create_directories(Native(kBareFile));
  EXPECT_FALSE(store_->IsDeviceDbExist());
}

TEST_F(DevicePersistence, TheBareFileDoesNotExistForAnUnknownUser) {
  Start();
  support::WriteBytes(Native(kBareFile), "");
  system_.samName.clear();
  EXPECT_FALSE(store_->IsDeviceDbExist());
}

}  // namespace
