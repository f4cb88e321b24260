// Device records as JSON and single fields as text.
#include "apps/json/RecordJson.h"

#include <gtest/gtest.h>

#include "tests/apps/ExpectedError.h"

namespace {

using KT::Json;
using KT::ParseJson;
using KT::ReadRecord;
using KT::RecordToJson;
using KT::SetField;
using support::ErrorOf;

// A value of its own for every field, so that none can stand for another.
const char kFull[] =
    R"({"devType":-1,"extraInt1":2,"summary":"s3","deviceId":"s4","devName":"s5","userName":"s6","nickName":"s7",)"
    R"("macAddr":"s8","macAddrInt":-9000000000,"isPaired":true,"shareType":11,"isReverseChannel":false,)"
    R"("isWifi5GAbility":false,"isAuthor":true,"modelName":"s15","peerUuid":"s16","accountInfo":17,"isTrusted":true,)"
    R"("connectType":19,"deviceType":20,"extraInt2":21,"trustType":4000000022,"peerDeviceVersion":"s23",)"
    R"("isSupportPlenix":true,"isConnected":25,"apkVersionNotMatch":26,"pairedIsAuthorized":27,)"
    R"("isFileSystemSupported":28,"multiDeviceSyncSwitch":29,"isPhoneMirrorSupported":30,)"
    R"("pairedDeviceIsReconnect":31,"pairedDeviceReconnectPermit":"s32"})";

void ExpectFull(const CurrZentapDeviceInfo& record) {
  EXPECT_EQ(record.devType, -1);
  EXPECT_EQ(record.extraInt1, 2);
  EXPECT_EQ(record.summary, "s3");
  EXPECT_EQ(record.deviceId, "s4");
  EXPECT_EQ(record.devName, "s5");
  EXPECT_EQ(record.userName, "s6");
  EXPECT_EQ(record.nickName, "s7");
  EXPECT_EQ(record.macAddr, "s8");
  EXPECT_EQ(record.macAddrInt, -9'000'000'000);
  EXPECT_TRUE(record.isPaired);
  EXPECT_EQ(record.shareType, 11);
  EXPECT_FALSE(record.isReverseChannel);
  EXPECT_FALSE(record.isWifi5GAbility);
  EXPECT_TRUE(record.isAuthor);
  EXPECT_EQ(record.modelName, "s15");
  EXPECT_EQ(record.peerUuid, "s16");
  EXPECT_EQ(record.accountInfo, 17);
  EXPECT_TRUE(record.isTrusted);
  EXPECT_EQ(record.connectType, 19);
  EXPECT_EQ(record.deviceType, 20);
  EXPECT_EQ(record.extraInt2, 21);
  EXPECT_EQ(record.trustType, 4'000'000'022U);
  EXPECT_EQ(record.peerDeviceVersion, "s23");
  EXPECT_TRUE(record.isSupportPlenix);
  EXPECT_EQ(record.isConnected, 25);
  EXPECT_EQ(record.apkVersionNotMatch, 26);
  EXPECT_EQ(record.pairedIsAuthorized, 27);
  EXPECT_EQ(record.isFileSystemSupported, 28);
  EXPECT_EQ(record.multiDeviceSyncSwitch, 29);
  EXPECT_EQ(record.isPhoneMirrorSupported, 30);
  EXPECT_EQ(record.pairedDeviceIsReconnect, 31);
  EXPECT_EQ(record.pairedDeviceReconnectPermit, "s32");
}

TEST(RecordJson, EveryFieldIsReadIntoItsMember) {
  CurrZentapDeviceInfo record;
  ReadRecord(ParseJson(kFull), "device", record);
  ExpectFull(record);
}

TEST(RecordJson, EveryFieldIsWrittenUnderItsNameInOrder) {
  CurrZentapDeviceInfo record;
  ReadRecord(ParseJson(kFull), "device", record);
  EXPECT_EQ(RecordToJson(record).dump(), kFull);
}

TEST(RecordJson, EveryFieldIsSetFromText) {
  CurrZentapDeviceInfo record;
  const Json fields = ParseJson(kFull);
  for (const auto& [name, value] : fields.items()) {
    SetField(record, name, value.is_string() ? value.get<std::string>() : value.dump());
  }
  ExpectFull(record);
}

TEST(RecordJson, ATrustedRecordHasTheFirst24Fields) {
  const Json object = RecordToJson(BluetoothDeviceSummary{});
  EXPECT_EQ(object.size(), 24U);
  EXPECT_EQ(object.begin().key(), "devType");
  EXPECT_EQ((--object.end()).key(), "isSupportPlenix");
  BluetoothDeviceSummary record;
  EXPECT_EQ(ErrorOf([&] {
              ReadRecord(Json{{"isConnected", 1}}, "trusted[2]", record);
            }),
            "trusted[2]: unknown field \"isConnected\"");
}

TEST(RecordJson, FieldsThatAreNotNamedStay) {
  BluetoothDeviceSummary record;
  record.devName = "kept";
  ReadRecord(Json{{"shareType", 5}}, "device", record);
  EXPECT_EQ(record.devName, "kept");
  EXPECT_EQ(record.shareType, 5);
  EXPECT_EQ(record.connectType, 2);
}

TEST(RecordJson, StringsMayBeHexadecimal) {
  BluetoothDeviceSummary record;
  ReadRecord(Json{{"devName", {{"hex", "ff00"}}}}, "device", record);
  EXPECT_EQ(record.devName, std::string("\xff\0", 2));
  EXPECT_EQ(RecordToJson(record)["devName"], (Json{{"hex", "ff00"}}));
}

struct Limits {
  const char* field;
  const char* below;
  const char* least;
  const char* most;
  const char* above;
};

class IntegerRange : public ::testing::TestWithParam<Limits> {
 protected:
  std::string Expected() const { return std::string("an integer from ") + GetParam().least + " to " + GetParam().most; }

  static void Read(const char* number) {
    BluetoothDeviceSummary record;
    ReadRecord(ParseJson("{\"" + std::string(GetParam().field) + "\": " + number + "}"), "the device", record);
    EXPECT_EQ(RecordToJson(record)[GetParam().field].dump(), number);
  }
  static void Set(const char* number) {
    BluetoothDeviceSummary record;
    SetField(record, GetParam().field, number);
    EXPECT_EQ(RecordToJson(record)[GetParam().field].dump(), number);
  }
};

TEST_P(IntegerRange, EndsWhereTheTypeEnds) {
  Read(GetParam().least);
  Read(GetParam().most);
  Set(GetParam().least);
  Set(GetParam().most);
  const std::string field = GetParam().field;
  for (const char* const outside : {GetParam().below, GetParam().above}) {
    EXPECT_EQ(ErrorOf([&] { Read(outside); }),
              "the device." + field + ": expected " + Expected() + ", found " + outside);
    EXPECT_EQ(ErrorOf([&] { Set(outside); }), field + ": expected " + Expected() + ", found \"" + outside + "\"");
  }
}

INSTANTIATE_TEST_SUITE_P(RecordJson, IntegerRange,
                         ::testing::Values(Limits{"devType", "-2147483649", "-2147483648", "2147483647", "2147483648"},
                                           Limits{"trustType", "-1", "0", "4294967295", "4294967296"}));

// One below the least 64-bit integer is no integer for the parser any more, but a number with a fraction.
TEST(RecordJson, SixtyFourBitIntegersEndWhereTheTypeEnds) {
  const std::string expected =
      "macAddrInt: expected an integer from -9223372036854775808 to 9223372036854775807, found ";
  BluetoothDeviceSummary record;
  ReadRecord(ParseJson(R"({"macAddrInt": -9223372036854775808})"), "d", record);
  EXPECT_EQ(RecordToJson(record)["macAddrInt"].dump(), "-9223372036854775808");
  ReadRecord(ParseJson(R"({"macAddrInt": 9223372036854775807})"), "d", record);
  EXPECT_EQ(record.macAddrInt, 9'223'372'036'854'775'807);
  EXPECT_EQ(ErrorOf([&] { ReadRecord(ParseJson(R"({"macAddrInt": 9223372036854775808})"), "d", record); }),
            "d." + expected + "9223372036854775808");
  EXPECT_EQ(ErrorOf([&] { ReadRecord(ParseJson(R"({"macAddrInt": 18446744073709551615})"), "d", record); }),
            "d." + expected + "18446744073709551615");
  EXPECT_EQ(ErrorOf([&] {
              ReadRecord(ParseJson(R"({"macAddrInt": -9223372036854775809})"), "d", record);
            }).find("d." + expected),
            0U);
  EXPECT_EQ(ErrorOf([&] { SetField(record, "macAddrInt", "9223372036854775808"); }),
            expected + "\"9223372036854775808\"");
  EXPECT_EQ(ErrorOf([&] { SetField(record, "macAddrInt", "-9223372036854775809"); }),
            expected + "\"-9223372036854775809\"");
  EXPECT_EQ(record.macAddrInt, 9'223'372'036'854'775'807);
}

TEST(RecordJson, ValuesOfAnotherTypeAreNamedWithTheirPlace) {
  BluetoothDeviceSummary record;
  const auto error = [&record](const char* json) {
    return ErrorOf([&] { ReadRecord(ParseJson(json), "paired", record); });
  };
  EXPECT_EQ(error(R"({"isPaired": 1})"), "paired.isPaired: expected true or false, found 1");
  EXPECT_EQ(error(R"({"isPaired": "true"})"), "paired.isPaired: expected true or false, found \"true\"");
  EXPECT_EQ(error(R"({"isPaired": "\u001b\u007f"})"), "paired.isPaired: expected true or false, found \"\\x1b\\x7f\"");
  EXPECT_EQ(error(R"({"devName": 7})"),
            "paired.devName: expected a string, or {\"hex\": \"...\"} with two digits a byte, found 7");
  EXPECT_EQ(error(R"({"devName": {"hex": "7"}})"),
            "paired.devName: expected a string, or {\"hex\": \"...\"} with two digits a byte, found an object");
  const std::string integer = "paired.devType: expected an integer from -2147483648 to 2147483647, found ";
  EXPECT_EQ(error(R"({"devType": "1"})"), integer + "\"1\"");
  EXPECT_EQ(error(R"({"devType": 1.0})"), integer + "1.0");
  EXPECT_EQ(error(R"({"devType": true})"), integer + "true");
  EXPECT_EQ(error(R"({"devType": null})"), integer + "null");
  EXPECT_EQ(error(R"({"devType": [1]})"), integer + "an array");
  EXPECT_EQ(error(R"({"devType": {}})"), integer + "an object");
}

TEST(RecordJson, ADeeplyNestedValueIsOnlyNamed) {
  BluetoothDeviceSummary record;
  const std::string deep = "{\"devType\": " + std::string(100'000, '[') + std::string(100'000, ']') + "}";
  EXPECT_EQ(ErrorOf([&] { ReadRecord(ParseJson(deep), "d", record); }),
            "d.devType: expected an integer from -2147483648 to 2147483647, found an array");
}

TEST(RecordJson, WhatIsNoObjectIsNamedWithItsPlace) {
  BluetoothDeviceSummary record;
  for (const char* const json : {"null", "[]", "\"a\"", "1"}) {
    EXPECT_EQ(ErrorOf([&] { ReadRecord(ParseJson(json), "trusted[0]", record); }),
              "trusted[0]: expected an object with the fields of a device");
  }
}

TEST(RecordJson, UnknownFieldsAreNamedSafely) {
  BluetoothDeviceSummary record;
  EXPECT_EQ(ErrorOf([&] { ReadRecord(ParseJson(R"({"\u001b[31m": 1})"), "d", record); }),
            "d: unknown field \"\\x1b[31m\"");
  EXPECT_EQ(ErrorOf([&] { SetField(record, "DevName", "a"); }), "unknown field \"DevName\"");
  EXPECT_EQ(ErrorOf([&] { SetField(record, "", "a"); }), "unknown field \"\"");
  EXPECT_EQ(ErrorOf([&] { SetField(record, "a\xff", "a"); }), "unknown field \"a\\xff\"");
}

TEST(SetField, TakesWholeIntegersOnly) {
  BluetoothDeviceSummary record;
  for (const char* const text : {"", " 1", "1 ", "+1", "1x", "0x1", "1.0", "--1", "-"}) {
    EXPECT_EQ(ErrorOf([&] { SetField(record, "devType", text); }),
              std::string("devType: expected an integer from -2147483648 to 2147483647, found \"") + text + "\"");
  }
  SetField(record, "devType", "-007");
  EXPECT_EQ(record.devType, -7);
}

TEST(SetField, TakesTrueAndFalseOnly) {
  BluetoothDeviceSummary record;
  for (const char* const text : {"", "1", "True", "yes", "true "}) {
    EXPECT_EQ(ErrorOf([&] { SetField(record, "isAuthor", text); }),
              std::string("isAuthor: expected true or false, found \"") + text + "\"");
  }
  SetField(record, "isAuthor", "true");
  EXPECT_TRUE(record.isAuthor);
  SetField(record, "isAuthor", "false");
  EXPECT_FALSE(record.isAuthor);
}

TEST(SetField, TakesAnyString) {
  BluetoothDeviceSummary record;
  record.devName = "before";
  SetField(record, "devName", "");
  EXPECT_EQ(record.devName, "");
  SetField(record, "devName", "= \xff\n");
  EXPECT_EQ(record.devName, "= \xff\n");
}

}  // namespace
