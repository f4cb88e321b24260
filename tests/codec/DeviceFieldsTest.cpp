#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

#include "codec/DeviceFieldVisitors.h"
#include "tests/codec/SampleRecords.h"

namespace codec_tests {
namespace {

using KT::DeviceTable;
using KT::Profile;
using Names = std::vector<std::string>;

const Names kFirst23{"devType",         "extraInt1",  "summary",    "deviceId",  "devName",          "userName",
                     "nickName",        "macAddr",    "macAddrInt", "isPaired",  "shareType",        "isReverseChannel",
                     "isWifi5GAbility", "isAuthor",   "modelName",  "peerUuid",  "accountInfo",      "isTrusted",
                     "connectType",     "deviceType", "extraInt2",  "trustType", "peerDeviceVersion"};
const Names kPlenix{"isSupportPlenix"};
const Names kLast8{
    "isConnected",           "apkVersionNotMatch",     "pairedIsAuthorized",      "isFileSystemSupported",
    "multiDeviceSyncSwitch", "isPhoneMirrorSupported", "pairedDeviceIsReconnect", "pairedDeviceReconnectPermit"};

Names operator+(Names left, const Names& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

template <Profile profile>
Names FieldNames() {
  KT::ProfileRecord<profile> record;
  Names names;
  KT::ForEachField<profile>(record, [&](const char* name, const auto&) { names.emplace_back(name); });
  return names;
}

template <DeviceTable table>
std::string ColumnText() {
  std::string text = "sumId";
  KT::ForEachColumn<table>([&](const auto& field) { text += std::string(", ") + field.name; });
  return text;
}

// The columns that hold text; the others are integers.
template <DeviceTable table>
Names TextColumns() {
  Names names;
  KT::ForEachColumn<table>([&]<class Field>(const Field& field) {
    if (std::is_same_v<typename Field::Value, std::string>) names.emplace_back(field.name);
  });
  return names;
}

TEST(DeviceFields, OfTheFullProfileAreAll32InDeclarationOrder) {
  EXPECT_EQ(FieldNames<Profile::Full>(), kFirst23 + kPlenix + kLast8);
}

TEST(DeviceFields, OfTheReadBackProfileLeaveOutIsSupportPlenix) {
  EXPECT_EQ(FieldNames<Profile::CurrentReadBack>(), kFirst23 + kLast8);
}

TEST(DeviceFields, OfTheTrustedProfileAreTheFirst24) { EXPECT_EQ(FieldNames<Profile::Trusted>(), kFirst23 + kPlenix); }

TEST(DeviceFields, OfTheCurrentTableStandInItsColumnOrder) {
  EXPECT_EQ(ColumnText<DeviceTable::Current>(),
            "sumId, devType, summary, devName, userName, nickName, macAddr, macAddrInt, isPaired, shareType, "
            "isReverseChannel, isWifi5GAbility, isAuthor, modelName, peerUuid, accountInfo, isTrusted, connectType, "
            "deviceType, trustType, peerDeviceVersion, isConnected, apkVersionNotMatch, pairedIsAuthorized, "
            "isFileSystemSupported, isPhoneMirrorSupported, multiDeviceSyncSwitch, pairedDeviceIsReconnect, "
            "pairedDeviceReconnectPermit");
}

TEST(DeviceFields, OfTheTrustedTableStandInItsColumnOrder) {
  EXPECT_EQ(ColumnText<DeviceTable::Trusted>(),
            "sumId, devType, summary, devName, deviceId, userName, nickName, macAddr, macAddrInt, isPaired, shareType, "
            "isReverseChannel, isWifi5GAbility, isAuthor, modelName, peerUuid, accountInfo, isTrusted, connectType, "
            "deviceType, trustType, peerDeviceVersion, isSupportPlenix");
}

TEST(DeviceFields, OfTextAreTheSameInBothTablesButForThree) {
  EXPECT_EQ(TextColumns<DeviceTable::Current>(),
            (Names{"summary", "devName", "userName", "nickName", "macAddr", "modelName", "peerUuid",
                   "peerDeviceVersion", "pairedDeviceReconnectPermit"}));
  EXPECT_EQ(TextColumns<DeviceTable::Trusted>(), (Names{"summary", "devName", "deviceId", "userName", "nickName",
                                                        "macAddr", "modelName", "peerUuid", "peerDeviceVersion"}));
}

TEST(DeviceFields, AreEachAtTheColumnTheyName) {
  int column = KT::kSumIdColumn;
  KT::ForEachColumn<DeviceTable::Current>([&](const auto& field) { EXPECT_EQ(field.currentColumn, ++column); });
  EXPECT_EQ(column, 29);
  column = KT::kSumIdColumn;
  KT::ForEachColumn<DeviceTable::Trusted>([&](const auto& field) { EXPECT_EQ(field.trustedColumn, ++column); });
  EXPECT_EQ(column, 23);
}

TEST(DeviceFields, ReachTheMemberOfTheirName) {
  CurrZentapDeviceInfo record;
  std::int32_t number = 0;
  KT::ForEachField(record, [&]<class Value>(const char* name, Value& value) {
    if constexpr (std::is_same_v<Value, std::string>) {
      value = name;
    } else if constexpr (!std::is_same_v<Value, bool>) {
      value = static_cast<Value>(++number);
    }
  });
  EXPECT_EQ(record.summary, "summary");
  EXPECT_EQ(record.peerUuid, "peerUuid");
  EXPECT_EQ(record.pairedDeviceReconnectPermit, "pairedDeviceReconnectPermit");
  EXPECT_EQ(record.devType, 1);
  EXPECT_EQ(record.macAddrInt, 3);
  EXPECT_EQ(record.multiDeviceSyncSwitch, 14);
  EXPECT_EQ(record.isPhoneMirrorSupported, 15);
}

TEST(DeviceFields, ThatChangePlacesInTheTableKeepTheirValues) {
  const CurrZentapDeviceInfo record = SampleCurrent();
  std::int32_t mirror = 0;
  std::int32_t sync = 0;
  KT::ForEachColumn<DeviceTable::Current>(record, [&]<class Value>(const std::string& name, const Value& value) {
    if constexpr (std::is_same_v<Value, std::int32_t>) {
      if (name == "isPhoneMirrorSupported") mirror = value;
      if (name == "multiDeviceSyncSwitch") sync = value;
    }
  });
  EXPECT_EQ(mirror, 0x30);
  EXPECT_EQ(sync, 0x29);
}

TEST(DeviceFields, CanBeFoundByName) {
  BluetoothDeviceSummary record;
  EXPECT_TRUE(KT::VisitField(record, "nickName", []<class Value>(Value& value) {
    if constexpr (std::is_same_v<Value, std::string>) value = "found";
  }));
  EXPECT_EQ(record.nickName, "found");
}

TEST(DeviceFields, OfNoOrAnotherRecordsNameAreNotFound) {
  BluetoothDeviceSummary record;
  const auto fail = [](auto&) { FAIL(); };
  EXPECT_FALSE(KT::VisitField(record, "isConnected", fail));
  EXPECT_FALSE(KT::VisitField(record, "", fail));
  EXPECT_FALSE(KT::VisitField(record, "nickname", fail));
}

}  // namespace
}  // namespace codec_tests
