#include "tests/codec/SampleRecords.h"

namespace codec_tests {

namespace {

// devType to peerDeviceVersion, which every profile carries.
constexpr const char* kFields1To23 =
    "04030201"                                // devType 0x01020304
    "FEFFFFFF"                                // extraInt1 -2
    "0500 42C3BC726F"                         // summary Büro
    "0300 642D31"                             // deviceId d-1
    "0600 E6898BE69CBA"                       // devName 手机
    "0400 5A6FC3AB"                           // userName Zoë
    "0400 F09F93B1"                           // nickName, a character beyond the 16-bit ones
    "0500 30413A3162"                         // macAddr 0A:1b
    "0807060504030201"                        // macAddrInt 0x0102030405060708
    "01000000"                                // isPaired true
    "07000000"                                // shareType 7
    "00000000"                                // isReverseChannel false
    "00000000"                                // isWifi5GAbility false
    "01000000"                                // isAuthor true
    "0200 4D39"                               // modelName M9
    "0100 75"                                 // peerUuid u
    "FFFFFF7F"                                // accountInfo 0x7FFFFFFF
    "01000000"                                // isTrusted true
    "FDFFFFFF"                                // connectType -3
    "0C000000"                                // deviceType 12
    "00000100"                                // extraInt2 0x10000
    "98BADCFE"                                // trustType 0xFEDCBA98
    "0300 312E32";                            // peerDeviceVersion 1.2
constexpr const char* kField24 = "01000000";  // isSupportPlenix true
constexpr const char* kFields25To32 =
    "02000000"    // isConnected 2
    "00010000"    // apkVersionNotMatch 256
    "FFFFFFFF"    // pairedIsAuthorized -1
    "03000000"    // isFileSystemSupported 3
    "29000000"    // multiDeviceSyncSwitch 0x29
    "30000000"    // isPhoneMirrorSupported 0x30
    "31000000"    // pairedDeviceIsReconnect 0x31
    "0200 6A61";  // pairedDeviceReconnectPermit ja

void FillShared(BluetoothDeviceSummary& record) {
  record.devType = 0x01020304;
  record.extraInt1 = -2;
  record.summary = "Büro";
  record.deviceId = "d-1";
  record.devName = "手机";
  record.userName = "Zoë";
  record.nickName = "\xF0\x9F\x93\xB1";
  record.macAddr = "0A:1b";
  record.macAddrInt = 0x0102030405060708;
  record.isPaired = true;
  record.shareType = 7;
  record.isReverseChannel = false;
  record.isWifi5GAbility = false;
  record.isAuthor = true;
  record.modelName = "M9";
  record.peerUuid = "u";
  record.accountInfo = 0x7FFFFFFF;
  record.isTrusted = true;
  record.connectType = -3;
  record.deviceType = 12;
  record.extraInt2 = 0x10000;
  record.trustType = 0xFEDCBA98;
  record.peerDeviceVersion = "1.2";
  record.isSupportPlenix = true;
}

}  // namespace

BluetoothDeviceSummary SampleSummary() {
  BluetoothDeviceSummary record;
  FillShared(record);
  return record;
}

CurrZentapDeviceInfo SampleCurrent() {
  CurrZentapDeviceInfo record;
  FillShared(record);
  record.isConnected = 2;
  record.apkVersionNotMatch = 256;
  record.pairedIsAuthorized = -1;
  record.isFileSystemSupported = 3;
  record.multiDeviceSyncSwitch = 0x29;
  record.isPhoneMirrorSupported = 0x30;
  record.pairedDeviceIsReconnect = 0x31;
  record.pairedDeviceReconnectPermit = "ja";
  return record;
}

Bytes SampleTrustedBytes() { return Joined({Hex(kFields1To23), Hex(kField24)}); }
Bytes SampleFullBytes() { return Joined({Hex(kFields1To23), Hex(kField24), Hex(kFields25To32)}); }
Bytes SampleReadBackBytes() { return Joined({Hex(kFields1To23), Hex(kFields25To32)}); }

}  // namespace codec_tests
