// The operations of the tap-device engines.
#include "tests/persistence/TapEngineTest.h"

namespace {

template <class Tap>
using TapOperations = TapEngineTest<Tap>;
TYPED_TEST_SUITE(TapOperations, BothTaps, TapName);

TYPED_TEST(TapOperations, InitFailsWithALineOfItsOwn) {
  this->system_.Fail(support::SystemCall::CreateDirectories, 1);
  std::filesystem::remove_all(this->profile_.NativeRoot());

  EXPECT_FALSE(this->engine_.Init());

  EXPECT_EQ(this->log_.Lines(), (Lines{"4 [KTData] Create directory failed.(KT::Utils::CreateDir)",
                                       this->Line("4 [KTData] Init database failed.", "Init")}));
}

TYPED_TEST(TapOperations, AddTwiceGivesTwoRowsOfWhichTheLastIsFound) {
  EXPECT_TRUE(this->engine_.AddZentapDeviceInfo("key", this->Named("first")));
  EXPECT_TRUE(this->engine_.AddZentapDeviceInfo("key", this->Named("second")));

  EXPECT_EQ(this->Query("id, sumId, devName"), (Lines{"1|key|first", "2|key|second"}));
  typename TypeParam::Record device;
  EXPECT_TRUE(this->engine_.GetZentapDeviceInfo("key", device));
  EXPECT_EQ(device.devName, "second");
  EXPECT_EQ(this->log_.Lines(), Lines{});
}

TYPED_TEST(TapOperations, AddTakesKeysOfAnyBytes) {
  const std::string key("o'b\0r \xff", 7);
  EXPECT_TRUE(this->engine_.AddZentapDeviceInfo(key, {}));
  EXPECT_EQ(this->Query("sumId"), Lines{key});
}

TYPED_TEST(TapOperations, AddLogsWhyItFails) {
  this->DropTable();
  EXPECT_FALSE(this->engine_.AddZentapDeviceInfo("key", {}));
  EXPECT_EQ(this->log_.Lines(),
            Lines{this->Line(std::string("4 [KTData] Add zentap device failed:no such table: ") + TypeParam::kTable,
                             "AddZentapDeviceInfo")});
}

TYPED_TEST(TapOperations, DeleteRemovesEveryRowOfTheKey) {
  this->engine_.AddZentapDeviceInfo("key", this->Named("first"));
  this->engine_.AddZentapDeviceInfo("other", this->Named("second", "key"));
  this->engine_.AddZentapDeviceInfo("key", this->Named("third"));
  this->statements_.clear();

  EXPECT_TRUE(this->engine_.DeleteZentapDeviceInfo("key"));

  EXPECT_EQ(this->Query("sumId, devName"), Lines{"other|second"});
  EXPECT_EQ(this->statements_.at(0), std::string("DELETE FROM ") + TypeParam::kTable + " WHERE sumId = 'key';");
  EXPECT_EQ(this->log_.Lines(), Lines{this->DeleteLine()});
}

TYPED_TEST(TapOperations, DeleteOfAnUnknownKeySucceeds) {
  EXPECT_TRUE(this->engine_.DeleteZentapDeviceInfo("key"));
  EXPECT_EQ(this->log_.Lines(), (Lines{this->DeleteLine(), this->NoRowLine()}));
}

TYPED_TEST(TapOperations, DeleteOfAKeyWithAQuoteFails) {
  EXPECT_FALSE(this->engine_.DeleteZentapDeviceInfo("o'brien"));
  EXPECT_EQ(this->log_.Lines(), (Lines{this->DeleteLine(),
                                       "4 [KTData] Delete database item filed:near \"brien\": syntax error"
                                       "(KT::DbEngine::DeleteDbItem)"}));
}

TYPED_TEST(TapOperations, UpdateReplacesTheRowsByANewOne) {
  this->engine_.AddZentapDeviceInfo("key", this->Named("first"));
  this->engine_.AddZentapDeviceInfo("key", this->Named("second"));
  this->statements_.clear();

  EXPECT_TRUE(this->engine_.UpdateZentapDeviceInfo("key", this->Named("third")));

  EXPECT_EQ(this->Query("id, sumId, devName"), Lines{"3|key|third"});
  EXPECT_EQ(this->statements_.at(1), TypeParam::kInsert) << "after the DELETE; there is no UPDATE";
  EXPECT_EQ(this->log_.Lines(), Lines{this->DeleteLine()});
}

TYPED_TEST(TapOperations, UpdateAddsAlthoughTheDeleteFailed) {
  EXPECT_TRUE(this->engine_.UpdateZentapDeviceInfo("o'brien", this->Named("first")));
  EXPECT_EQ(this->Query("sumId, devName"), Lines{"o'brien|first"});
}

TYPED_TEST(TapOperations, UpdateFailsWhenTheAddFails) {
  this->DropTable();
  EXPECT_FALSE(this->engine_.UpdateZentapDeviceInfo("key", {}));
}

TYPED_TEST(TapOperations, ListUpdateDeletesBySummaryAndStoresUnderSumId) {
  this->engine_.AddZentapDeviceInfo("s1", this->Named("deleted, for its key is a summary"));
  this->engine_.AddZentapDeviceInfo("sumId", this->Named("kept"));
  this->engine_.AddZentapDeviceInfo("s3", this->Named("kept as well", "s2"));
  this->log_.Take();

  EXPECT_TRUE(this->engine_.UpdateZentapDeviceInfoList({this->Named("new 1", "s1"), this->Named("new 2", "s2")}));

  EXPECT_EQ(this->Query("sumId, devName, summary"),
            (Lines{"sumId|kept|", "s3|kept as well|s2", "sumId|new 1|s1", "sumId|new 2|s2"}));
  EXPECT_EQ(this->log_.Lines(), (Lines{this->DeleteLine(), this->DeleteLine(), this->NoRowLine()}));
}

TYPED_TEST(TapOperations, ListUpdateAddsItsRowsAgainEachTime) {
  const std::vector<typename TypeParam::Record> list{this->Named("one", "s1")};
  EXPECT_TRUE(this->engine_.UpdateZentapDeviceInfoList(list));
  EXPECT_TRUE(this->engine_.UpdateZentapDeviceInfoList(list));

  EXPECT_EQ(this->Query("sumId, devName"), (Lines{"sumId|one", "sumId|one"}));
  typename TypeParam::Record device;
  EXPECT_TRUE(this->engine_.GetZentapDeviceInfo("sumId", device));
  EXPECT_EQ(device.devName, "one");
}

TYPED_TEST(TapOperations, ListUpdateOfNothingChangesNothing) {
  this->engine_.AddZentapDeviceInfo("key", this->Named("first"));
  EXPECT_TRUE(this->engine_.UpdateZentapDeviceInfoList({}));
  EXPECT_EQ(this->Query("sumId, devName"), Lines{"key|first"});
  EXPECT_EQ(this->log_.Lines(), Lines{});
}

TYPED_TEST(TapOperations, ListUpdateStopsAtTheFirstThatCannotBeAdded) {
  const std::string table = TypeParam::kTable;
  this->Memory().exec("CREATE TRIGGER refuse BEFORE INSERT ON " + table +
                      " WHEN new.devName = 'bad' BEGIN SELECT RAISE(ABORT, 'refused'); END");

  EXPECT_FALSE(this->engine_.UpdateZentapDeviceInfoList(
      {this->Named("good", "s1"), this->Named("bad", "s2"), this->Named("never tried", "s3")}));

  EXPECT_EQ(this->Query("sumId, devName"), Lines{"sumId|good"});
  EXPECT_EQ(this->log_.Lines(),
            (Lines{this->DeleteLine(), this->NoRowLine(), this->DeleteLine(), this->NoRowLine(),
                   this->Line("4 [KTData] Add zentap device failed:refused", "AddZentapDeviceInfo")}));
}

TYPED_TEST(TapOperations, ListUpdateIgnoresADeleteThatFails) {
  EXPECT_TRUE(this->engine_.UpdateZentapDeviceInfoList({this->Named("one", "o'brien")}));
  EXPECT_EQ(this->Query("sumId, devName, summary"), Lines{"sumId|one|o'brien"});
}

TYPED_TEST(TapOperations, ListUpdateTakesTheKeyFromTheDescriptor) {
  this->engine_.Content().keyColumn = "another";
  EXPECT_TRUE(this->engine_.UpdateZentapDeviceInfoList({this->Named("one", "s1")}));
  EXPECT_EQ(this->Query("sumId, devName"), Lines{"another|one"});
}

TYPED_TEST(TapOperations, GetListReplacesTheListByAllRows) {
  this->engine_.AddZentapDeviceInfo("b", this->Named("first"));
  this->engine_.AddZentapDeviceInfo("a", this->Named("second"));
  this->statements_.clear();
  std::vector<typename TypeParam::Record> list{this->Named("was there before")};

  EXPECT_TRUE(this->engine_.GetZentapDeviceInfoList(list));

  EXPECT_EQ(list, (std::vector{this->Named("first"), this->Named("second")}));
  EXPECT_EQ(this->statements_, Lines{std::string("SELECT * FROM ") + TypeParam::kTable});
}

TYPED_TEST(TapOperations, GetListOfAnEmptyTableSucceeds) {
  std::vector<typename TypeParam::Record> list{this->Named("was there before")};
  EXPECT_TRUE(this->engine_.GetZentapDeviceInfoList(list));
  EXPECT_TRUE(list.empty());
}

TYPED_TEST(TapOperations, GetListLogsWhyItFails) {
  this->DropTable();
  std::vector<typename TypeParam::Record> list;
  EXPECT_FALSE(this->engine_.GetZentapDeviceInfoList(list));
  EXPECT_EQ(
      this->log_.Lines(),
      Lines{this->Line(std::string("4 [KTData] Get zentap device list failed:no such table: ") + TypeParam::kTable,
                       "GetZentapDeviceInfoList")});
}

TYPED_TEST(TapOperations, GetLeavesTheOutputForAKeyThatIsNotThere) {
  typename TypeParam::Record device = TypeParam::Sample();
  EXPECT_TRUE(this->engine_.GetZentapDeviceInfo("key", device));
  EXPECT_EQ(device, TypeParam::Sample());
  EXPECT_EQ(this->statements_, Lines{std::string("SELECT * FROM ") + TypeParam::kTable + " WHERE sumId = 'key';"});
  EXPECT_EQ(this->log_.Lines(), Lines{});
}

TYPED_TEST(TapOperations, GetOfAKeyWithAQuoteFails) {
  typename TypeParam::Record device = TypeParam::Sample();
  EXPECT_FALSE(this->engine_.GetZentapDeviceInfo("o'brien", device));
  EXPECT_EQ(device, TypeParam::Sample());
  EXPECT_EQ(this->log_.Lines(), Lines{this->Line("4 [KTData] Get zentap device failed:near \"brien\": syntax error",
                                                 "GetZentapDeviceInfo")});
}

TYPED_TEST(TapOperations, GetOfAKeyWithAZeroByteFails) {
  typename TypeParam::Record device;
  EXPECT_FALSE(this->engine_.GetZentapDeviceInfo(std::string("a\0b", 3), device));
  EXPECT_EQ(this->log_.Lines(),
            Lines{this->Line("4 [KTData] Get zentap device failed:unrecognized token: \"'a\"", "GetZentapDeviceInfo")});
}

TYPED_TEST(TapOperations, OnlyTheFirstStatementOfAKeyRuns) {
  const std::string attack = std::string("key'; DROP TABLE ") + TypeParam::kTable + "; --";
  this->engine_.AddZentapDeviceInfo("key", this->Named("first"));
  typename TypeParam::Record device;
  EXPECT_TRUE(this->engine_.GetZentapDeviceInfo(attack, device));
  EXPECT_EQ(device.devName, "first");
  EXPECT_TRUE(this->engine_.DeleteZentapDeviceInfo(attack));
  EXPECT_EQ(this->Query("sumId"), Lines{});
}

TYPED_TEST(TapOperations, EveryOneNeedsAnOpenDatabase) {
  this->engine_.Content().dbContentPtr.reset();
  typename TypeParam::Record device = TypeParam::Sample();
  std::vector<typename TypeParam::Record> list{TypeParam::Sample()};

  EXPECT_FALSE(this->engine_.AddZentapDeviceInfo("key", {}));
  EXPECT_FALSE(this->engine_.DeleteZentapDeviceInfo("key"));
  EXPECT_FALSE(this->engine_.UpdateZentapDeviceInfo("key", {}));
  EXPECT_FALSE(this->engine_.UpdateZentapDeviceInfoList({}));
  EXPECT_FALSE(this->engine_.GetZentapDeviceInfoList(list));
  EXPECT_FALSE(this->engine_.GetZentapDeviceInfo("key", device));

  EXPECT_EQ(device, TypeParam::Sample());
  EXPECT_EQ(list.size(), 1U);
  const std::string message = "4 [KTData] dbContentPtr is nullptr.";
  EXPECT_EQ(this->log_.Lines(),
            (Lines{this->Line(message, "AddZentapDeviceInfo"), this->Line(message, "DeleteZentapDeviceInfo"),
                   this->Line(message, "UpdateZentapDeviceInfo"), this->Line(message, "UpdateZentapDeviceInfoList"),
                   this->Line(message, "GetZentapDeviceInfoList"), this->Line(message, "GetZentapDeviceInfo")}));
}

using TrustedSave = TapEngineTest<TrustedTap>;

TEST_F(TrustedSave, LogsBeforeItSaves) {
  EXPECT_TRUE(engine_.SaveZentapDbIntoDisk());
  EXPECT_EQ(log_.Lines(), (Lines{Line("3 [KTData] Save zentap database into disk.", "SaveZentapDbIntoDisk"),
                                 "3 [KTData] Save database success.(KT::DbEngine::SaveDbIntoDisk)"}));
  EXPECT_EQ(Files(), Lines{TrustedTap::kFile});
}

TEST_F(TrustedSave, FailsAsTheSaveFails) {
  std::filesystem::remove_all(profile_.NativeRoot());
  EXPECT_FALSE(engine_.SaveZentapDbIntoDisk());
}

TEST_F(TrustedSave, NeedsAnOpenDatabase) {
  engine_.Content().dbContentPtr.reset();
  EXPECT_FALSE(engine_.SaveZentapDbIntoDisk());
  EXPECT_EQ(log_.Lines(), Lines{Line("4 [KTData] dbContentPtr is nullptr.", "SaveZentapDbIntoDisk")});
}

}  // namespace
