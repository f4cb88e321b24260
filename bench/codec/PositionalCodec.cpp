#include "bench/codec/PositionalCodec.h"

namespace bench {

namespace {

void PutCommon(const BluetoothDeviceSummary& device, PositionalWriter& writer) {
  writer.Put(device.devType);
  writer.Put(device.extraInt1);
  writer.Put(device.summary);
  writer.Put(device.deviceId);
  writer.Put(device.devName);
  writer.Put(device.userName);
  writer.Put(device.nickName);
  writer.Put(device.macAddr);
  writer.Put(device.macAddrInt);
  writer.Put(device.isPaired);
  writer.Put(device.shareType);
  writer.Put(device.isReverseChannel);
  writer.Put(device.isWifi5GAbility);
  writer.Put(device.isAuthor);
  writer.Put(device.modelName);
  writer.Put(device.peerUuid);
  writer.Put(device.accountInfo);
  writer.Put(device.isTrusted);
  writer.Put(device.connectType);
  writer.Put(device.deviceType);
  writer.Put(device.extraInt2);
  writer.Put(device.trustType);
  writer.Put(device.peerDeviceVersion);
}

void TakeCommon(PositionalReader& reader, BluetoothDeviceSummary& device) {
  reader.Take(device.devType);
  reader.Take(device.extraInt1);
  reader.Take(device.summary);
  reader.Take(device.deviceId);
  reader.Take(device.devName);
  reader.Take(device.userName);
  reader.Take(device.nickName);
  reader.Take(device.macAddr);
  reader.Take(device.macAddrInt);
  reader.Take(device.isPaired);
  reader.Take(device.shareType);
  reader.Take(device.isReverseChannel);
  reader.Take(device.isWifi5GAbility);
  reader.Take(device.isAuthor);
  reader.Take(device.modelName);
  reader.Take(device.peerUuid);
  reader.Take(device.accountInfo);
  reader.Take(device.isTrusted);
  reader.Take(device.connectType);
  reader.Take(device.deviceType);
  reader.Take(device.extraInt2);
  reader.Take(device.trustType);
  reader.Take(device.peerDeviceVersion);
}

void PutCurrentOnly(const CurrZentapDeviceInfo& device, PositionalWriter& writer) {
  writer.Put(device.isConnected);
  writer.Put(device.apkVersionNotMatch);
  writer.Put(device.pairedIsAuthorized);
  writer.Put(device.isFileSystemSupported);
  writer.Put(device.multiDeviceSyncSwitch);
  writer.Put(device.isPhoneMirrorSupported);
  writer.Put(device.pairedDeviceIsReconnect);
  writer.Put(device.pairedDeviceReconnectPermit);
}

void TakeCurrentOnly(PositionalReader& reader, CurrZentapDeviceInfo& device) {
  reader.Take(device.isConnected);
  reader.Take(device.apkVersionNotMatch);
  reader.Take(device.pairedIsAuthorized);
  reader.Take(device.isFileSystemSupported);
  reader.Take(device.multiDeviceSyncSwitch);
  reader.Take(device.isPhoneMirrorSupported);
  reader.Take(device.pairedDeviceIsReconnect);
  reader.Take(device.pairedDeviceReconnectPermit);
}

// As it is read back: without isSupportPlenix.
void Put(const CurrZentapDeviceInfo& device, PositionalWriter& writer) {
  PutCommon(device, writer);
  PutCurrentOnly(device, writer);
}

void Take(PositionalReader& reader, CurrZentapDeviceInfo& device) {
  TakeCommon(reader, device);
  TakeCurrentOnly(reader, device);
}

void Put(const BluetoothDeviceSummary& device, PositionalWriter& writer) {
  PutCommon(device, writer);
  writer.Put(device.isSupportPlenix);
}

void Take(PositionalReader& reader, BluetoothDeviceSummary& device) {
  TakeCommon(reader, device);
  reader.Take(device.isSupportPlenix);
}

template <class Message>
void PutList(const Message& message, PositionalWriter& writer) {
  writer.Put(message.pkgName);
  writer.Put(message.count);
  for (const auto& device : message.list) Put(device, writer);
  writer.Put(message.result);
}

template <class Message>
void TakeList(PositionalReader& reader, Message& message) {
  reader.Take(message.pkgName);
  reader.Take(message.count);
  for (std::int32_t i = 0; i < message.count; ++i) Take(reader, message.list.emplace_back());
  reader.Take(message.result);
}

}  // namespace

void Encode(const PlainSetCurrent& message, PositionalWriter& writer) {
  writer.Put(message.pkgName);
  writer.Put(message.sumId);
  PutCommon(message.info, writer);
  writer.Put(message.info.isSupportPlenix);
  PutCurrentOnly(message.info, writer);
}

void Encode(const PlainGetCurrent& message, PositionalWriter& writer) {
  writer.Put(message.pkgName);
  writer.Put(message.result);
  Put(message.info, writer);
}

void Encode(const PlainGetTrusted& message, PositionalWriter& writer) {
  writer.Put(message.pkgName);
  writer.Put(message.result);
  Put(message.info, writer);
}

void Encode(const PlainCurrentList& message, PositionalWriter& writer) { PutList(message, writer); }
void Encode(const PlainTrustedList& message, PositionalWriter& writer) { PutList(message, writer); }

void Decode(PositionalReader& reader, PlainSetCurrent& message) {
  reader.Take(message.pkgName);
  reader.Take(message.sumId);
  TakeCommon(reader, message.info);
  reader.Take(message.info.isSupportPlenix);
  TakeCurrentOnly(reader, message.info);
}

void Decode(PositionalReader& reader, PlainGetCurrent& message) {
  reader.Take(message.pkgName);
  reader.Take(message.result);
  Take(reader, message.info);
}

void Decode(PositionalReader& reader, PlainGetTrusted& message) {
  reader.Take(message.pkgName);
  reader.Take(message.result);
  Take(reader, message.info);
}

void Decode(PositionalReader& reader, PlainCurrentList& message) { TakeList(reader, message); }
void Decode(PositionalReader& reader, PlainTrustedList& message) { TakeList(reader, message); }

}  // namespace bench
