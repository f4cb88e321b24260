// Records for a reader at a terminal.
#include "apps/marnockctl/RecordTable.h"

#include <gtest/gtest.h>

#include "codec/BluetoothDeviceSummary.h"
#include "codec/CurrZentapDeviceInfo.h"

namespace {

TEST(FieldLines, ShowEveryFieldUnderItsName) {
  BluetoothDeviceSummary device;
  device.devName = "T\xc3\xa4g";
  device.summary = "a\n\\";
  device.macAddrInt = -1;
  device.trustType = 4'294'967'295U;
  device.isPaired = true;
  EXPECT_EQ(KT::FieldLines(device),
            "devType            0\n"
            "extraInt1          0\n"
            "summary            a\\x0a\\\\\n"
            "deviceId\n"
            "devName            T\xc3\xa4g\n"
            "userName\n"
            "nickName\n"
            "macAddr\n"
            "macAddrInt         -1\n"
            "isPaired           true\n"
            "shareType          1\n"
            "isReverseChannel   true\n"
            "isWifi5GAbility    true\n"
            "isAuthor           false\n"
            "modelName\n"
            "peerUuid\n"
            "accountInfo        0\n"
            "isTrusted          false\n"
            "connectType        2\n"
            "deviceType         -1\n"
            "extraInt2          -1\n"
            "trustType          4294967295\n"
            "peerDeviceVersion\n"
            "isSupportPlenix    false");
}

TEST(FieldLines, OfACurrentDeviceGoOnWithItsOwnFields) {
  CurrZentapDeviceInfo device;
  device.pairedDeviceReconnectPermit = "yes";
  const std::string lines = KT::FieldLines(device);
  EXPECT_NE(lines.find("\nisSupportPlenix              false\n"
                       "isConnected                  0\n"
                       "apkVersionNotMatch           0\n"
                       "pairedIsAuthorized           0\n"
                       "isFileSystemSupported        0\n"
                       "multiDeviceSyncSwitch        0\n"
                       "isPhoneMirrorSupported       0\n"
                       "pairedDeviceIsReconnect      0\n"
                       "pairedDeviceReconnectPermit  yes"),
            std::string::npos)
      << lines;
}

TEST(Table, OfNoRecordsIsEmpty) { EXPECT_EQ(KT::Table(std::vector<BluetoothDeviceSummary>{}), ""); }

TEST(Table, LeavesColumnsOfDefaultsOut) {
  std::vector<BluetoothDeviceSummary> devices(3);
  devices[0].devName = "Phone";
  devices[1].devName = "\xd0\x96\xd0\xb6";  // two letters in four bytes
  devices[1].trustType = 7;
  devices[2].devType = -5;
  EXPECT_EQ(KT::Table(devices),
            "devType  devName  trustType\n"
            "0        Phone    0\n"
            "0        \xd0\x96\xd0\xb6       7\n"
            "-5                0");
}

TEST(Table, OfDefaultRecordsAloneHasALineForEachAllTheSame) {
  EXPECT_EQ(KT::Table(std::vector<BluetoothDeviceSummary>(2)), "");
}

TEST(Table, KeepsEveryDeviceOnOneLine) {
  std::vector<CurrZentapDeviceInfo> devices(2);
  devices[0].devName = "two\nlines";
  devices[1].isConnected = 1;
  EXPECT_EQ(KT::Table(devices),
            "devName       isConnected\n"
            "two\\x0alines  0\n"
            "              1");
}

}  // namespace
