// The two tap-device engines under one set of tests.
#pragma once

#include <string>

#include "persistence/CurrZentapDbEngine.h"
#include "persistence/TrustedZentapDbEngine.h"
#include "tests/persistence/EngineTest.h"
#include "tests/persistence/TapDeviceSamples.h"
#include "tests/support/SqlTrace.h"

struct CurrentTap {
  using Engine = KT::CurrZentapDbEngine;
  using Record = CurrZentapDeviceInfo;
  static constexpr const char* kClass = "KT::CurrZentapDbEngine";
  static constexpr const char* kTable = "currZentapDeviceInfo";
  static constexpr const char* kFile = "CurrentZentapDeviceInfo1G12NJ9DS39D.db";
  static constexpr const char* kColumnDefs =
      "(id INTEGER PRIMARY KEY AUTOINCREMENT, sumId TEXT NOT NULL, devType INTEGER NOT NULL, summary TEXT NOT NULL, "
      "devName TEXT NOT NULL, userName TEXT NOT NULL, nickName TEXT NOT NULL, macAddr TEXT NOT NULL, "
      "macAddrInt INTEGER NOT NULL, isPaired INTEGER NOT NULL, shareType INTEGER NOT NULL, "
      "isReverseChannel INTEGER NOT NULL, isWifi5GAbility INTEGER NOT NULL, isAuthor INTEGER NOT NULL, "
      "modelName TEXT NOT NULL, peerUuid TEXT NOT NULL, accountInfo INTEGER NOT NULL, isTrusted INTEGER NOT NULL, "
      "connectType INTEGER NOT NULL, deviceType INTEGER NOT NULL, trustType INTEGER NOT NULL, "
      "peerDeviceVersion TEXT NOT NULL, isConnected INTEGER NOT NULL, apkVersionNotMatch INTEGER NOT NULL, "
      "pairedIsAuthorized INTEGER NOT NULL, isFileSystemSupported INTEGER NOT NULL, "
      "isPhoneMirrorSupported INTEGER NOT NULL, multiDeviceSyncSwitch INTEGER NOT NULL, "
      "pairedDeviceIsReconnect INTEGER NOT NULL, pairedDeviceReconnectPermit TEXT NOT NULL)";
  static constexpr const char* kInsert =
      "INSERT INTO currZentapDeviceInfo (sumId, devType, summary, devName, userName, nickName, macAddr, macAddrInt, "
      "isPaired, shareType, isReverseChannel, isWifi5GAbility, isAuthor, modelName, peerUuid, accountInfo, isTrusted, "
      "connectType, deviceType, trustType, peerDeviceVersion, isConnected, apkVersionNotMatch, pairedIsAuthorized, "
      "isFileSystemSupported, isPhoneMirrorSupported, multiDeviceSyncSwitch, pairedDeviceIsReconnect, "
      "pairedDeviceReconnectPermit) VALUES(? , ? , ? , ? , ? , ? , ? , ? , ? , ? , ? , ? , ? , ? , ? , ? , ? , ? , ? , "
      "? , ? , ? , ? , ? , ? , ? , ? , ? , ?)";
  // t and i for TEXT and INTEGER, from sumId on.
  static constexpr const char* kStorageClasses = "titttttiiiiiittiiiiitiiiiiiit";
  static constexpr const char* kSampleRow = kSampleCurrentRow;
  static Record Sample() { return SampleCurrent(); }
  static Record SampleReadBack() { return SampleCurrentReadBack(); }
};

struct TrustedTap {
  using Engine = KT::TrustedZentapDbEngine;
  using Record = BluetoothDeviceSummary;
  static constexpr const char* kClass = "KT::TrustedZentapDbEngine";
  static constexpr const char* kTable = "trustedZentapDeviceInfo";
  static constexpr const char* kFile = "TrustedZentapDeviceInfo2G12NJ9DS39D.db";
  static constexpr const char* kColumnDefs =
      "(id INTEGER PRIMARY KEY AUTOINCREMENT, sumId TEXT NOT NULL, devType INTEGER NOT NULL, summary TEXT NOT NULL, "
      "devName TEXT NOT NULL, deviceId TEXT NOT NULL, userName TEXT NOT NULL, nickName TEXT NOT NULL, "
      "macAddr TEXT NOT NULL, macAddrInt INTEGER NOT NULL, isPaired INTEGER NOT NULL, shareType INTEGER NOT NULL, "
      "isReverseChannel INTEGER NOT NULL, isWifi5GAbility INTEGER NOT NULL, isAuthor INTEGER NOT NULL, "
      "modelName TEXT NOT NULL, peerUuid TEXT NOT NULL, accountInfo INTEGER NOT NULL, isTrusted INTEGER NOT NULL, "
      "connectType INTEGER NOT NULL, deviceType INTEGER NOT NULL, trustType INTEGER NOT NULL, "
      "peerDeviceVersion TEXT NOT NULL, isSupportPlenix INTEGER NOT NULL)";
  static constexpr const char* kInsert =
      "INSERT INTO trustedZentapDeviceInfo (sumId, devType, summary, devName, deviceId, userName, nickName, macAddr, "
      "macAddrInt, isPaired, shareType, isReverseChannel, isWifi5GAbility, isAuthor, modelName, peerUuid, accountInfo, "
      "isTrusted, connectType, deviceType, trustType, peerDeviceVersion, isSupportPlenix) VALUES(? , ? , ? , ? , ? , "
      "? , ? , ? , ? , ? , ? , ? , ? , ? , ? , ? , ? , ? , ? , ? , ? , ? , ?)";
  static constexpr const char* kStorageClasses = "tittttttiiiiiittiiiiiti";
  static constexpr const char* kSampleRow = kSampleTrustedRow;
  static Record Sample() { return SampleTrusted(); }
  static Record SampleReadBack() { return SampleTrustedReadBack(); }
};

template <class Tap>
class TapEngineTest : public EngineTest {
 protected:
  using Record = typename Tap::Record;

  TapEngineTest() {
    log_.Take();
    statements_.clear();
  }

  SQLite::Database& Memory() { return *engine_.Content().dbContentPtr; }
  void DropTable() { Memory().exec(std::string("DROP TABLE ") + Tap::kTable); }
  Lines Query(const std::string& columns) { return Rows(Memory(), "SELECT " + columns + " FROM " + Tap::kTable); }

  static Record Named(const std::string& name, const std::string& summary = "") {
    Record device;
    device.devName = name;
    device.summary = summary;
    return device;
  }

  // A log line of the engine.
  static std::string Line(const std::string& message, const std::string& operation) {
    return message + "(" + Tap::kClass + "::" + operation + ")";
  }
  static std::string DeleteLine() { return Line("3 [KTData] Delete zentap device.", "DeleteZentapDeviceInfo"); }
  static std::string NoRowLine() { return "3 [KTData] Delete item 0(KT::DbEngine::DeleteDbItem)"; }

  Lines statements_;
  support::SqlTrace trace_{[this](const std::string& text) { statements_.push_back(text); }};
  typename Tap::Engine engine_;
};

using BothTaps = testing::Types<CurrentTap, TrustedTap>;

// Names the two in test names.
struct TapName {
  template <class Tap>
  static std::string GetName(int) {
    return Tap::kTable;
  }
};
