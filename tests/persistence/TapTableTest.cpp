// The tap-device tables: their text, what is stored in them and what is read back.
#include <sqlite3.h>

#include "tests/persistence/TapEngineTest.h"

namespace {

template <class Tap>
using TapTable = TapEngineTest<Tap>;
TYPED_TEST_SUITE(TapTable, BothTaps, TapName);

TYPED_TEST(TapTable, IsDescribed) {
  const KT::DbContent& content = this->engine_.Content();
  EXPECT_EQ(content.keyColumn, "sumId");
  EXPECT_EQ(content.tableName, TypeParam::kTable);
  EXPECT_EQ(content.dirPath, L"\\Orvnta\\DeviceMgr\\");
  EXPECT_EQ(content.fileName, TypeParam::kFile);
  EXPECT_EQ(content.filePath, this->profile_.File(TypeParam::kFile));
}

TYPED_TEST(TapTable, IsMadeByThisText) {
  ASSERT_TRUE(this->engine_.CreateTable(this->engine_.Content()));
  EXPECT_EQ(
      this->statements_,
      (Lines{"BEGIN", std::string("CREATE TABLE IF NOT EXISTS ") + TypeParam::kTable + TypeParam::kColumnDefs + ";",
             "COMMIT"}));
}

TYPED_TEST(TapTable, HasThisSchema) {
  EXPECT_EQ(Rows(this->Memory(), std::string("SELECT sql FROM sqlite_master WHERE name = '") + TypeParam::kTable + "'"),
            Lines{std::string("CREATE TABLE ") + TypeParam::kTable + TypeParam::kColumnDefs});
}

TYPED_TEST(TapTable, IsFilledByThisText) {
  ASSERT_TRUE(this->engine_.AddZentapDeviceInfo("key", {}));
  EXPECT_EQ(this->statements_, Lines{TypeParam::kInsert});
}

TYPED_TEST(TapTable, StoresEveryFieldInItsColumn) {
  ASSERT_TRUE(this->engine_.AddZentapDeviceInfo("key", TypeParam::Sample()));
  EXPECT_EQ(this->Query("*"), Lines{std::string("1|") + TypeParam::kSampleRow});
}

TYPED_TEST(TapTable, StoresTextAndIntegers) {
  ASSERT_TRUE(this->engine_.AddZentapDeviceInfo("12", TypeParam::Sample()));
  ASSERT_TRUE(this->engine_.AddZentapDeviceInfo("13", {}));
  SQLite::Statement select(this->Memory(), std::string("SELECT * FROM ") + TypeParam::kTable);
  while (select.executeStep()) {
    std::string classes;
    for (int column = 1; column < select.getColumnCount(); ++column) {
      classes += select.getColumn(column).isText() ? 't' : select.getColumn(column).isInteger() ? 'i' : '?';
    }
    EXPECT_EQ(classes, TypeParam::kStorageClasses);
  }
}

TYPED_TEST(TapTable, GivesBackWhatItStores) {
  ASSERT_TRUE(this->engine_.AddZentapDeviceInfo("key", TypeParam::Sample()));
  typename TypeParam::Record device;
  ASSERT_TRUE(this->engine_.GetZentapDeviceInfo("key", device));
  EXPECT_EQ(device, TypeParam::SampleReadBack());
}

TYPED_TEST(TapTable, ReplacesTheFieldsThatItDoesNotStoreByTheirDefaults) {
  ASSERT_TRUE(this->engine_.AddZentapDeviceInfo("key", {}));
  typename TypeParam::Record device = TypeParam::Sample();
  ASSERT_TRUE(this->engine_.GetZentapDeviceInfo("key", device));
  EXPECT_EQ(device, typename TypeParam::Record());
}

TYPED_TEST(TapTable, KeepsZeroBytesAndBytesThatAreNoUtf8InText) {
  typename TypeParam::Record device;
  device.devName = std::string("a\0b\xff\xfe", 5);
  device.peerUuid = std::string(100'000, '\x80');
  ASSERT_TRUE(this->engine_.AddZentapDeviceInfo("key", device));
  typename TypeParam::Record readBack;
  ASSERT_TRUE(this->engine_.GetZentapDeviceInfo("key", readBack));
  EXPECT_EQ(readBack, device);
}

TYPED_TEST(TapTable, SurvivesInItsFile) {
  ASSERT_TRUE(this->engine_.AddZentapDeviceInfo("key", TypeParam::Sample()));
  ASSERT_TRUE(this->engine_.SaveDbIntoDisk(this->engine_.Content()));

  typename TypeParam::Engine other;
  std::vector<typename TypeParam::Record> list;
  ASSERT_TRUE(other.GetZentapDeviceInfoList(list));
  EXPECT_EQ(list, std::vector{TypeParam::SampleReadBack()});
}

TYPED_TEST(TapTable, ReadsColumnsByNameInAnyOrder) {
  // The same columns back to front, with one more that nobody knows.
  std::string backToFront = "more";
  for (int column = 29; column >= 0; --column) {
    const Lines name = Rows(this->Memory(), std::string("SELECT name FROM pragma_table_info('") + TypeParam::kTable +
                                                "') WHERE cid = " + std::to_string(column));
    backToFront += name.empty() ? "" : ", " + name[0];
  }
  ASSERT_TRUE(this->engine_.AddZentapDeviceInfo("key", TypeParam::Sample()));
  const std::string table = TypeParam::kTable;
  this->Memory().exec("CREATE TABLE copy AS SELECT " + backToFront + " FROM (SELECT *, 7 AS more FROM " + table +
                      "); DROP TABLE " + table + "; ALTER TABLE copy RENAME TO " + table);

  typename TypeParam::Record device;
  EXPECT_TRUE(this->engine_.GetZentapDeviceInfo("key", device));
  EXPECT_EQ(device, TypeParam::SampleReadBack());
}

TYPED_TEST(TapTable, ReadsValuesOfOtherTypesAsSqliteConvertsThem) {
  const std::string table = TypeParam::kTable;
  ASSERT_TRUE(this->engine_.AddZentapDeviceInfo("key", TypeParam::Sample()));
  this->Memory().exec("CREATE TABLE copy AS SELECT * FROM " + table + "; DROP TABLE " + table +
                      "; ALTER TABLE copy RENAME TO " + table);
  this->Memory().exec("UPDATE " + table +
                      " SET devName = 12, summary = NULL, devType = '34', shareType = NULL, isPaired = 4294967296, "
                      "isAuthor = -1, isTrusted = 0, trustType = 4294967297, macAddr = x'4142'");

  typename TypeParam::Record device;
  ASSERT_TRUE(this->engine_.GetZentapDeviceInfo("key", device));
  EXPECT_EQ(device.devName, "12");
  EXPECT_EQ(device.summary, "");
  EXPECT_EQ(device.devType, 34);
  EXPECT_EQ(device.shareType, 0);
  EXPECT_TRUE(device.isPaired) << "any value but 0 is true";
  EXPECT_TRUE(device.isAuthor);
  EXPECT_FALSE(device.isTrusted);
  EXPECT_EQ(device.trustType, 1U);
  EXPECT_EQ(device.macAddr, "AB");
}

TYPED_TEST(TapTable, FailsToReadRowsWithoutAColumnButNotAnEmptyTable) {
  const std::string table = TypeParam::kTable;
  this->Memory().exec("ALTER TABLE " + table + " DROP COLUMN peerUuid");
  std::vector<typename TypeParam::Record> list;
  EXPECT_TRUE(this->engine_.GetZentapDeviceInfoList(list));

  this->DropTable();
  this->Memory().exec("CREATE TABLE " + table + " (sumId); INSERT INTO " + table + " VALUES ('key')");
  EXPECT_FALSE(this->engine_.GetZentapDeviceInfoList(list));
  typename TypeParam::Record device = TypeParam::Sample();
  EXPECT_FALSE(this->engine_.GetZentapDeviceInfo("key", device));
  EXPECT_EQ(device, TypeParam::Sample());
  EXPECT_EQ(
      this->log_.Lines(),
      (Lines{this->Line("4 [KTData] Get zentap device list failed:Unknown column name.", "GetZentapDeviceInfoList"),
             this->Line("4 [KTData] Get zentap device failed:Unknown column name.", "GetZentapDeviceInfo")}));
}

}  // namespace
