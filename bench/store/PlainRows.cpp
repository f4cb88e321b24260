#include "bench/store/PlainRows.h"

#include <cstdint>

namespace bench {

namespace {

constexpr PlainTable kCurrentTable{
    "currZentapDeviceInfo", "sumId", "CurrentZentapDeviceInfo1G12NJ9DS39D.db",
    "CREATE TABLE IF NOT EXISTS currZentapDeviceInfo(id INTEGER PRIMARY KEY AUTOINCREMENT, sumId "
    "TEXT NOT NULL, devType INTEGER NOT NULL, summary TEXT NOT NULL, devName TEXT NOT NULL, "
    "userName TEXT NOT NULL, nickName TEXT NOT NULL, macAddr TEXT NOT NULL, macAddrInt INTEGER NOT "
    "NULL, isPaired INTEGER NOT NULL, shareType INTEGER NOT NULL, isReverseChannel INTEGER NOT "
    "NULL, isWifi5GAbility INTEGER NOT NULL, isAuthor INTEGER NOT NULL, modelName TEXT NOT NULL, "
    "peerUuid TEXT NOT NULL, accountInfo INTEGER NOT NULL, isTrusted INTEGER NOT NULL, connectType "
    "INTEGER NOT NULL, deviceType INTEGER NOT NULL, trustType INTEGER NOT NULL, peerDeviceVersion "
    "TEXT NOT NULL, isConnected INTEGER NOT NULL, apkVersionNotMatch INTEGER NOT NULL, "
    "pairedIsAuthorized INTEGER NOT NULL, isFileSystemSupported INTEGER NOT NULL, "
    "isPhoneMirrorSupported INTEGER NOT NULL, multiDeviceSyncSwitch INTEGER NOT NULL, "
    "pairedDeviceIsReconnect INTEGER NOT NULL, pairedDeviceReconnectPermit TEXT NOT NULL);",
    "INSERT INTO currZentapDeviceInfo (sumId, devType, summary, devName, userName, nickName, "
    "macAddr, macAddrInt, isPaired, shareType, isReverseChannel, isWifi5GAbility, isAuthor, "
    "modelName, peerUuid, accountInfo, isTrusted, connectType, deviceType, trustType, "
    "peerDeviceVersion, isConnected, apkVersionNotMatch, pairedIsAuthorized, isFileSystemSupported, "
    "isPhoneMirrorSupported, multiDeviceSyncSwitch, pairedDeviceIsReconnect, "
    "pairedDeviceReconnectPermit) VALUES(? , ? , ? , ? , ? , ? , ? , ? , ? , ? , ? , ? , ? , ? , ? "
    ", ? , ? , ? , ? , ? , ? , ? , ? , ? , ? , ? , ? , ? , ?)"};

constexpr PlainTable kTrustedTable{
    "trustedZentapDeviceInfo", "sumId", "TrustedZentapDeviceInfo2G12NJ9DS39D.db",
    "CREATE TABLE IF NOT EXISTS trustedZentapDeviceInfo(id INTEGER PRIMARY KEY AUTOINCREMENT, sumId "
    "TEXT NOT NULL, devType INTEGER NOT NULL, summary TEXT NOT NULL, devName TEXT NOT NULL, "
    "deviceId TEXT NOT NULL, userName TEXT NOT NULL, nickName TEXT NOT NULL, macAddr TEXT NOT NULL, "
    "macAddrInt INTEGER NOT NULL, isPaired INTEGER NOT NULL, shareType INTEGER NOT NULL, "
    "isReverseChannel INTEGER NOT NULL, isWifi5GAbility INTEGER NOT NULL, isAuthor INTEGER NOT "
    "NULL, modelName TEXT NOT NULL, peerUuid TEXT NOT NULL, accountInfo INTEGER NOT NULL, isTrusted "
    "INTEGER NOT NULL, connectType INTEGER NOT NULL, deviceType INTEGER NOT NULL, trustType INTEGER "
    "NOT NULL, peerDeviceVersion TEXT NOT NULL, isSupportPlenix INTEGER NOT NULL);",
    "INSERT INTO trustedZentapDeviceInfo (sumId, devType, summary, devName, deviceId, userName, "
    "nickName, macAddr, macAddrInt, isPaired, shareType, isReverseChannel, isWifi5GAbility, "
    "isAuthor, modelName, peerUuid, accountInfo, isTrusted, connectType, deviceType, trustType, "
    "peerDeviceVersion, isSupportPlenix) VALUES(? , ? , ? , ? , ? , ? , ? , ? , ? , ? , ? , ? , ? , "
    "? , ? , ? , ? , ? , ? , ? , ? , ? , ?)"};

constexpr PlainTable kPeerTable{
    "PEER_DEVICE", "udId", "PeerDeviceInfo1G12NJ9DS39D.db",
    "CREATE TABLE IF NOT EXISTS PEER_DEVICE(id INTEGER PRIMARY KEY AUTOINCREMENT, udId TEXT NOT NULL, "
    "sumId TEXT NOT NULL);",
    "INSERT INTO PEER_DEVICE (udId, sumId) VALUES(? , ?)"};

void Bind(sqlite3_stmt* insert, int position, const std::string& value) {
  sqlite3_bind_text(insert, position, value.data(), static_cast<int>(value.size()), SQLITE_STATIC);
}
void Bind(sqlite3_stmt* insert, int position, bool value) { sqlite3_bind_int(insert, position, value ? 1 : 0); }
void Bind(sqlite3_stmt* insert, int position, std::int32_t value) { sqlite3_bind_int(insert, position, value); }
void Bind(sqlite3_stmt* insert, int position, std::uint32_t value) { sqlite3_bind_int64(insert, position, value); }
void Bind(sqlite3_stmt* insert, int position, std::int64_t value) { sqlite3_bind_int64(insert, position, value); }

void Read(sqlite3_stmt* row, int column, std::string& value) {
  const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
  value.assign(text, static_cast<std::size_t>(sqlite3_column_bytes(row, column)));
}
void Read(sqlite3_stmt* row, int column, bool& value) { value = sqlite3_column_int(row, column) != 0; }
void Read(sqlite3_stmt* row, int column, std::int32_t& value) { value = sqlite3_column_int(row, column); }
void Read(sqlite3_stmt* row, int column, std::uint32_t& value) {
  value = static_cast<std::uint32_t>(sqlite3_column_int64(row, column));
}
void Read(sqlite3_stmt* row, int column, std::int64_t& value) { value = sqlite3_column_int64(row, column); }

std::size_t ValueBytes(const std::string& value) { return value.size(); }
template <class Integer>
std::size_t ValueBytes(Integer) {
  return sizeof(Integer) == sizeof(bool) ? sizeof(std::int32_t) : sizeof(Integer);
}

template <class... Values>
std::size_t SizeOf(const Values&... values) {
  return (std::size_t{0} + ... + ValueBytes(values));
}

}  // namespace

template <>
const PlainTable& PlainTableOf<CurrZentapDeviceInfo>() {
  return kCurrentTable;
}
template <>
const PlainTable& PlainTableOf<BluetoothDeviceSummary>() {
  return kTrustedTable;
}
template <>
const PlainTable& PlainTableOf<std::string>() {
  return kPeerTable;
}

void BindRow(sqlite3_stmt* insert, const std::string& key, const CurrZentapDeviceInfo& device) {
  Bind(insert, 1, key);
  Bind(insert, 2, device.devType);
  Bind(insert, 3, device.summary);
  Bind(insert, 4, device.devName);
  Bind(insert, 5, device.userName);
  Bind(insert, 6, device.nickName);
  Bind(insert, 7, device.macAddr);
  Bind(insert, 8, device.macAddrInt);
  Bind(insert, 9, device.isPaired);
  Bind(insert, 10, device.shareType);
  Bind(insert, 11, device.isReverseChannel);
  Bind(insert, 12, device.isWifi5GAbility);
  Bind(insert, 13, device.isAuthor);
  Bind(insert, 14, device.modelName);
  Bind(insert, 15, device.peerUuid);
  Bind(insert, 16, device.accountInfo);
  Bind(insert, 17, device.isTrusted);
  Bind(insert, 18, device.connectType);
  Bind(insert, 19, device.deviceType);
  Bind(insert, 20, device.trustType);
  Bind(insert, 21, device.peerDeviceVersion);
  Bind(insert, 22, device.isConnected);
  Bind(insert, 23, device.apkVersionNotMatch);
  Bind(insert, 24, device.pairedIsAuthorized);
  Bind(insert, 25, device.isFileSystemSupported);
  Bind(insert, 26, device.isPhoneMirrorSupported);
  Bind(insert, 27, device.multiDeviceSyncSwitch);
  Bind(insert, 28, device.pairedDeviceIsReconnect);
  Bind(insert, 29, device.pairedDeviceReconnectPermit);
}

void BindRow(sqlite3_stmt* insert, const std::string& key, const BluetoothDeviceSummary& device) {
  Bind(insert, 1, key);
  Bind(insert, 2, device.devType);
  Bind(insert, 3, device.summary);
  Bind(insert, 4, device.devName);
  Bind(insert, 5, device.deviceId);
  Bind(insert, 6, device.userName);
  Bind(insert, 7, device.nickName);
  Bind(insert, 8, device.macAddr);
  Bind(insert, 9, device.macAddrInt);
  Bind(insert, 10, device.isPaired);
  Bind(insert, 11, device.shareType);
  Bind(insert, 12, device.isReverseChannel);
  Bind(insert, 13, device.isWifi5GAbility);
  Bind(insert, 14, device.isAuthor);
  Bind(insert, 15, device.modelName);
  Bind(insert, 16, device.peerUuid);
  Bind(insert, 17, device.accountInfo);
  Bind(insert, 18, device.isTrusted);
  Bind(insert, 19, device.connectType);
  Bind(insert, 20, device.deviceType);
  Bind(insert, 21, device.trustType);
  Bind(insert, 22, device.peerDeviceVersion);
  Bind(insert, 23, device.isSupportPlenix);
}

void BindRow(sqlite3_stmt* insert, const std::string& key, const std::string& sumId) {
  Bind(insert, 1, key);
  Bind(insert, 2, sumId);
}

void ReadRow(sqlite3_stmt* row, CurrZentapDeviceInfo& device) {
  Read(row, 2, device.devType);
  Read(row, 3, device.summary);
  Read(row, 4, device.devName);
  Read(row, 5, device.userName);
  Read(row, 6, device.nickName);
  Read(row, 7, device.macAddr);
  Read(row, 8, device.macAddrInt);
  Read(row, 9, device.isPaired);
  Read(row, 10, device.shareType);
  Read(row, 11, device.isReverseChannel);
  Read(row, 12, device.isWifi5GAbility);
  Read(row, 13, device.isAuthor);
  Read(row, 14, device.modelName);
  Read(row, 15, device.peerUuid);
  Read(row, 16, device.accountInfo);
  Read(row, 17, device.isTrusted);
  Read(row, 18, device.connectType);
  Read(row, 19, device.deviceType);
  Read(row, 20, device.trustType);
  Read(row, 21, device.peerDeviceVersion);
  Read(row, 22, device.isConnected);
  Read(row, 23, device.apkVersionNotMatch);
  Read(row, 24, device.pairedIsAuthorized);
  Read(row, 25, device.isFileSystemSupported);
  Read(row, 26, device.isPhoneMirrorSupported);
  Read(row, 27, device.multiDeviceSyncSwitch);
  Read(row, 28, device.pairedDeviceIsReconnect);
  Read(row, 29, device.pairedDeviceReconnectPermit);
}

void ReadRow(sqlite3_stmt* row, BluetoothDeviceSummary& device) {
  Read(row, 2, device.devType);
  Read(row, 3, device.summary);
  Read(row, 4, device.devName);
  Read(row, 5, device.deviceId);
  Read(row, 6, device.userName);
  Read(row, 7, device.nickName);
  Read(row, 8, device.macAddr);
  Read(row, 9, device.macAddrInt);
  Read(row, 10, device.isPaired);
  Read(row, 11, device.shareType);
  Read(row, 12, device.isReverseChannel);
  Read(row, 13, device.isWifi5GAbility);
  Read(row, 14, device.isAuthor);
  Read(row, 15, device.modelName);
  Read(row, 16, device.peerUuid);
  Read(row, 17, device.accountInfo);
  Read(row, 18, device.isTrusted);
  Read(row, 19, device.connectType);
  Read(row, 20, device.deviceType);
  Read(row, 21, device.trustType);
  Read(row, 22, device.peerDeviceVersion);
  Read(row, 23, device.isSupportPlenix);
}

void ReadRow(sqlite3_stmt* row, std::string& sumId) { Read(row, 2, sumId); }

std::size_t RowBytes(const std::string& key, const CurrZentapDeviceInfo& device) {
  return SizeOf(key, device.devType, device.summary, device.devName, device.userName, device.nickName, device.macAddr,
                device.macAddrInt, device.isPaired, device.shareType, device.isReverseChannel, device.isWifi5GAbility,
                device.isAuthor, device.modelName, device.peerUuid, device.accountInfo, device.isTrusted,
                device.connectType, device.deviceType, device.trustType, device.peerDeviceVersion, device.isConnected,
                device.apkVersionNotMatch, device.pairedIsAuthorized, device.isFileSystemSupported,
                device.isPhoneMirrorSupported, device.multiDeviceSyncSwitch, device.pairedDeviceIsReconnect,
                device.pairedDeviceReconnectPermit);
}

std::size_t RowBytes(const std::string& key, const BluetoothDeviceSummary& device) {
  return SizeOf(key, device.devType, device.summary, device.devName, device.deviceId, device.userName, device.nickName,
                device.macAddr, device.macAddrInt, device.isPaired, device.shareType, device.isReverseChannel,
                device.isWifi5GAbility, device.isAuthor, device.modelName, device.peerUuid, device.accountInfo,
                device.isTrusted, device.connectType, device.deviceType, device.trustType, device.peerDeviceVersion,
                device.isSupportPlenix);
}

std::size_t RowBytes(const std::string& key, const std::string& sumId) { return SizeOf(key, sumId); }

}  // namespace bench
