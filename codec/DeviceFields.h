// The one description of the device records' fields: what each is called, which encodings carry it and where the tables
// store it. Encoding, SQL text, binding, reading back and documentation all walk these tables.
#pragma once

#include <cstdint>
#include <tuple>

#include "codec/BluetoothDeviceSummary.h"
#include "codec/CurrZentapDeviceInfo.h"

namespace KT {

// The three encodings of a record. Each carries its fields in the order of the tables below.
enum class Profile {
  Full,             // CurrZentapDeviceInfo, all 32 fields: the request to store a current device
  CurrentReadBack,  // CurrZentapDeviceInfo, 31 fields: a current device in an answer
  Trusted,          // BluetoothDeviceSummary, 24 fields: a trusted device in every message
};

enum class DeviceTable { Current, Trusted };

// Columns are numbered from 0: 0 is id, 1 is sumId, so that a stored field's column is also its position among the
// parameters of an INSERT that starts with sumId.
inline constexpr int kSumIdColumn = 1;
inline constexpr int kNotStored = -1;

// A set of profiles, one bit each.
using ProfileSet = unsigned;
constexpr ProfileSet Only(Profile profile) { return 1U << static_cast<unsigned>(profile); }
inline constexpr ProfileSet kTrustedAndFull = Only(Profile::Trusted) | Only(Profile::Full);
inline constexpr ProfileSet kCurrentProfiles = Only(Profile::Full) | Only(Profile::CurrentReadBack);
inline constexpr ProfileSet kEveryProfile = kCurrentProfiles | Only(Profile::Trusted);

// One field. The member's type alone decides the other forms:
//   std::string    a string on the stream, TEXT in a table
//   std::int64_t   8 bytes, bound as 64 bits
//   std::int32_t   4 bytes, bound as 32 bits
//   std::uint32_t  4 bytes, bound zero-extended, so that a stored number is never negative
//   bool           4 bytes, 0 or 1 (any value but 0 reads as true), bound as 32 bits
template <class RecordType, class ValueType>
struct DeviceField {
  using Record = RecordType;
  using Value = ValueType;

  const char* name;  // of the member, of the column, and in JSON: a literal
  ValueType RecordType::*member;
  ProfileSet profiles;
  int currentColumn;  // kNotStored where the table has none
  int trustedColumn;

  constexpr bool In(Profile profile) const { return (profiles & Only(profile)) != 0; }
  constexpr int Column(DeviceTable table) const {
    return table == DeviceTable::Current ? currentColumn : trustedColumn;
  }
};

template <class RecordType, class ValueType>
DeviceField(const char*, ValueType RecordType::*, ProfileSet, int, int) -> DeviceField<RecordType, ValueType>;

// The 24 fields that both records have, in stream order.
// deviceId is stored after devName in the trusted table, although it comes before it on the stream; the current table
// has no column for it, nor for isSupportPlenix, which is therefore left out when a current device is read back.
inline constexpr std::tuple kSummaryFields{
    DeviceField{"devType", &BluetoothDeviceSummary::devType, kEveryProfile, 2, 2},
    DeviceField{"extraInt1", &BluetoothDeviceSummary::extraInt1, kEveryProfile, kNotStored, kNotStored},
    DeviceField{"summary", &BluetoothDeviceSummary::summary, kEveryProfile, 3, 3},
    DeviceField{"deviceId", &BluetoothDeviceSummary::deviceId, kEveryProfile, kNotStored, 5},
    DeviceField{"devName", &BluetoothDeviceSummary::devName, kEveryProfile, 4, 4},
    DeviceField{"userName", &BluetoothDeviceSummary::userName, kEveryProfile, 5, 6},
    DeviceField{"nickName", &BluetoothDeviceSummary::nickName, kEveryProfile, 6, 7},
    DeviceField{"macAddr", &BluetoothDeviceSummary::macAddr, kEveryProfile, 7, 8},
    DeviceField{"macAddrInt", &BluetoothDeviceSummary::macAddrInt, kEveryProfile, 8, 9},
    DeviceField{"isPaired", &BluetoothDeviceSummary::isPaired, kEveryProfile, 9, 10},
    DeviceField{"shareType", &BluetoothDeviceSummary::shareType, kEveryProfile, 10, 11},
    DeviceField{"isReverseChannel", &BluetoothDeviceSummary::isReverseChannel, kEveryProfile, 11, 12},
    DeviceField{"isWifi5GAbility", &BluetoothDeviceSummary::isWifi5GAbility, kEveryProfile, 12, 13},
    DeviceField{"isAuthor", &BluetoothDeviceSummary::isAuthor, kEveryProfile, 13, 14},
    DeviceField{"modelName", &BluetoothDeviceSummary::modelName, kEveryProfile, 14, 15},
    DeviceField{"peerUuid", &BluetoothDeviceSummary::peerUuid, kEveryProfile, 15, 16},
    DeviceField{"accountInfo", &BluetoothDeviceSummary::accountInfo, kEveryProfile, 16, 17},
    DeviceField{"isTrusted", &BluetoothDeviceSummary::isTrusted, kEveryProfile, 17, 18},
    DeviceField{"connectType", &BluetoothDeviceSummary::connectType, kEveryProfile, 18, 19},
    DeviceField{"deviceType", &BluetoothDeviceSummary::deviceType, kEveryProfile, 19, 20},
    DeviceField{"extraInt2", &BluetoothDeviceSummary::extraInt2, kEveryProfile, kNotStored, kNotStored},
    DeviceField{"trustType", &BluetoothDeviceSummary::trustType, kEveryProfile, 20, 21},
    DeviceField{"peerDeviceVersion", &BluetoothDeviceSummary::peerDeviceVersion, kEveryProfile, 21, 22},
    DeviceField{"isSupportPlenix", &BluetoothDeviceSummary::isSupportPlenix, kTrustedAndFull, kNotStored, 23},
};

// The 8 fields that a current device has besides, in stream order.
// multiDeviceSyncSwitch and isPhoneMirrorSupported change places between stream and table. pairedDeviceReconnectPermit
// is text, unlike what surrounds it. Files and clients in use depend on both.
inline constexpr std::tuple kCurrentOnlyFields{
    DeviceField{"isConnected", &CurrZentapDeviceInfo::isConnected, kCurrentProfiles, 22, kNotStored},
    DeviceField{"apkVersionNotMatch", &CurrZentapDeviceInfo::apkVersionNotMatch, kCurrentProfiles, 23, kNotStored},
    DeviceField{"pairedIsAuthorized", &CurrZentapDeviceInfo::pairedIsAuthorized, kCurrentProfiles, 24, kNotStored},
    DeviceField{"isFileSystemSupported", &CurrZentapDeviceInfo::isFileSystemSupported, kCurrentProfiles, 25,
                kNotStored},
    DeviceField{"multiDeviceSyncSwitch", &CurrZentapDeviceInfo::multiDeviceSyncSwitch, kCurrentProfiles, 27,
                kNotStored},
    DeviceField{"isPhoneMirrorSupported", &CurrZentapDeviceInfo::isPhoneMirrorSupported, kCurrentProfiles, 26,
                kNotStored},
    DeviceField{"pairedDeviceIsReconnect", &CurrZentapDeviceInfo::pairedDeviceIsReconnect, kCurrentProfiles, 28,
                kNotStored},
    DeviceField{"pairedDeviceReconnectPermit", &CurrZentapDeviceInfo::pairedDeviceReconnectPermit, kCurrentProfiles, 29,
                kNotStored},
};

inline constexpr auto kCurrentFields = std::tuple_cat(kSummaryFields, kCurrentOnlyFields);

}  // namespace KT
