// Counting saves, and telling of a change that is not on the disk.
#include <sqlite3.h>

#include "persistence/DevicePersistence.h"
#include "tests/persistence/EngineTest.h"
#include "tests/support/FaultVfs.h"

namespace {

using KT::SaveCounts;
using KT::StoreTable;
using support::FileCall;

// As saved|failedSinceLastSaved.
std::string Text(const SaveCounts& counts) {
  return std::to_string(counts.saved) + "|" + std::to_string(counts.failedSinceLastSaved);
}

class EngineSaves : public EngineTest {
 protected:
  EngineSaves() { EXPECT_TRUE(engine_.InitDb(engine_.content)); }

  support::FaultVfs vfs_;
  NotesEngine engine_;
};

TEST_F(EngineSaves, StartAtNothing) { EXPECT_EQ(Text(engine_.Saves()), "0|0"); }

TEST_F(EngineSaves, AreCountedWhenTheyReachTheDisk) {
  engine_.SaveDbIntoDisk(engine_.content);
  engine_.SaveDbIntoDisk(engine_.content);
  EXPECT_EQ(Text(engine_.Saves()), "2|0");
}

TEST_F(EngineSaves, ThatFailAreCountedUntilOneSucceeds) {
  engine_.SaveDbIntoDisk(engine_.content);
  vfs_.FailFrom(FileCall::Write, 1, SQLITE_FULL);
  engine_.SaveDbIntoDisk(engine_.content);
  engine_.SaveDbIntoDisk(engine_.content);
  EXPECT_EQ(Text(engine_.Saves()), "1|2");
  vfs_.Heal();
  engine_.SaveDbIntoDisk(engine_.content);
  EXPECT_EQ(Text(engine_.Saves()), "2|0");
}

TEST_F(EngineSaves, WithoutADatabaseFail) {
  engine_.content.dbContentPtr.reset();
  engine_.SaveDbIntoDisk(engine_.content);
  EXPECT_EQ(Text(engine_.Saves()), "0|1");
}

TEST_F(EngineSaves, AreCountedOnWhenTheDatabaseIsLoadedAnew) {
  engine_.SaveDbIntoDisk(engine_.content);
  engine_.InitDb(engine_.content);
  EXPECT_EQ(Text(engine_.Saves()), "1|0");
}

// What the observer was told, as table|saved|failedSinceLastSaved. It carries no context, hence the global.
Lines g_unsaved;

void NoteUnsaved(StoreTable table, const SaveCounts& saves) {
  constexpr const char* kNames[] = {"peer", "current", "trusted"};
  g_unsaved.push_back(std::string(kNames[static_cast<int>(table)]) + "|" + Text(saves));
}

class StoreSaves : public EngineTest {
 protected:
  StoreSaves() {
    g_unsaved.clear();
    store_.SetUnsavedChangeObserver(&NoteUnsaved);
  }

  Lines AllSaves() const {
    return {Text(store_.Saves(StoreTable::Peer)), Text(store_.Saves(StoreTable::Current)),
            Text(store_.Saves(StoreTable::Trusted))};
  }

  support::FaultVfs vfs_;
  KT::DevicePersistence store_;
};

TEST_F(StoreSaves, AreCountedByTable) {
  store_.SetPeerDevice("p", "s");
  store_.SetCurrZentapDeviceInfo("s", {});
  store_.DeleteCurrZentapDeviceInfo("s");
  store_.SetTrustedZentapDeviceInfo("s", {});
  store_.SetTrustedZentapDeviceInfoList({});
  store_.DeleteTrustedZentapDeviceInfo("s");
  EXPECT_EQ(AllSaves(), (Lines{"1|0", "2|0", "3|0"}));
  EXPECT_EQ(g_unsaved, Lines());
}

TEST_F(StoreSaves, AreNotMadeByReadsAndByChangesThatFailed) {
  std::string sumId;
  store_.GetPeerDevice("p", sumId);
  EXPECT_EQ(store_.DeletePeerDevice("it's"), -4996);
  EXPECT_EQ(AllSaves(), (Lines{"0|0", "0|0", "0|0"}));
}

TEST_F(StoreSaves, ThatFailAfterAChangeAreToldWithTheirTable) {
  vfs_.FailFrom(FileCall::Open, 1, SQLITE_CANTOPEN);
  EXPECT_EQ(store_.SetPeerDevice("p", "s"), 0);
  EXPECT_EQ(store_.DeletePeerDevice("p"), 0);
  EXPECT_EQ(store_.SetCurrZentapDeviceInfo("s", {}), 0);
  EXPECT_EQ(store_.SetCurrZentapDeviceInfoList({}), 0);
  EXPECT_EQ(store_.DeleteCurrZentapDeviceInfo("s"), 0);
  EXPECT_EQ(store_.SetTrustedZentapDeviceInfo("s", {}), 0);
  EXPECT_EQ(store_.SetTrustedZentapDeviceInfoList({}), 0);
  EXPECT_EQ(store_.DeleteTrustedZentapDeviceInfo("s"), 0);
  EXPECT_EQ(g_unsaved, (Lines{"peer|0|1", "peer|0|2", "current|0|1", "current|0|2", "current|0|3", "trusted|0|1",
                              "trusted|0|2", "trusted|0|3"}));
}

TEST_F(StoreSaves, ThatFailAreNobodysBusinessWithoutAnObserver) {
  store_.SetUnsavedChangeObserver(nullptr);
  vfs_.FailFrom(FileCall::Open, 1, SQLITE_CANTOPEN);
  EXPECT_EQ(store_.SetPeerDevice("p", "s"), 0);
  EXPECT_EQ(Text(store_.Saves(StoreTable::Peer)), "0|1");
}

TEST_F(StoreSaves, ThatFailDoNotConcernAChangeThatWasRefused) {
  vfs_.FailFrom(FileCall::Open, 1, SQLITE_CANTOPEN);
  EXPECT_EQ(store_.DeletePeerDevice("it's"), -4996);
  EXPECT_EQ(g_unsaved, Lines());
}

using StoreEnd = EngineTest;

TEST_F(StoreEnd, SavesAreNoChanges) {
  g_unsaved.clear();
  {
    support::FaultVfs vfs;
    KT::DevicePersistence store;
    store.SetUnsavedChangeObserver(&NoteUnsaved);
    vfs.FailFrom(FileCall::Open, 1, SQLITE_CANTOPEN);
  }
  EXPECT_EQ(g_unsaved, Lines());
}

}  // namespace
