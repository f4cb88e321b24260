// The three table engines under one set of operations, for sweeps that are the same for each.
#pragma once

#include <string>
#include <vector>

#include "persistence/CurrZentapDbEngine.h"
#include "persistence/PeerDeviceDbEngine.h"
#include "persistence/TrustedZentapDbEngine.h"

namespace faults {

// A row is a key with a value: a peer's sumId, a device's name.
struct PeerTable {
  using Engine = KT::PeerDeviceDbEngine;
  static constexpr const char* kName = "peers";
  static constexpr const char* kFile = "PeerDeviceInfo1G12NJ9DS39D.db";
  static constexpr const char* kRows = "SELECT udId, sumId FROM PEER_DEVICE ORDER BY id";
  static constexpr const char* kInitFailure =
      "4 [KTData] Init peer device database failed.(KT::PeerDeviceDbEngine::Init)";

  static constexpr const char* kAddFailure = "4 [KTData] Add peer device failed:";
  static constexpr const char* kGetFailure = "4 [KTData] Get peer device failed:";

  static bool Add(Engine& engine, const std::string& key, const std::string& value) {
    return engine.AddPeerDevice(key, value);
  }
  static bool Delete(Engine& engine, const std::string& key) { return engine.DeletePeerDevice(key); }
  static bool Update(Engine& engine, const std::string& key, const std::string& value) {
    return engine.UpdatePeerDevice(key, value);
  }
  static bool Get(Engine& engine, const std::string& key, std::string& value) {
    return engine.QueryPeerDevice(key, value);
  }
  static bool Save(Engine& engine) { return engine.SaveDbIntoDisk(engine.Content()); }
};

template <class EngineType, class RecordType>
struct TapTable {
  using Engine = EngineType;
  using Record = RecordType;
  static constexpr const char* kAddFailure = "4 [KTData] Add zentap device failed:";
  static constexpr const char* kGetFailure = "4 [KTData] Get zentap device failed:";

  static Record Named(const std::string& name) {
    Record record;
    record.devName = name;
    return record;
  }
  static bool Add(Engine& engine, const std::string& key, const std::string& value) {
    return engine.AddZentapDeviceInfo(key, Named(value));
  }
  static bool Delete(Engine& engine, const std::string& key) { return engine.DeleteZentapDeviceInfo(key); }
  static bool Update(Engine& engine, const std::string& key, const std::string& value) {
    return engine.UpdateZentapDeviceInfo(key, Named(value));
  }
  static bool Get(Engine& engine, const std::string& key, std::string& value) {
    Record record;
    const bool isRead = engine.GetZentapDeviceInfo(key, record);
    value = record.devName;
    return isRead;
  }
};

struct CurrentTable : TapTable<KT::CurrZentapDbEngine, CurrZentapDeviceInfo> {
  static constexpr const char* kName = "current devices";
  static constexpr const char* kFile = "CurrentZentapDeviceInfo1G12NJ9DS39D.db";
  static constexpr const char* kRows = "SELECT sumId, devName FROM currZentapDeviceInfo ORDER BY id";
  static constexpr const char* kInitFailure = "4 [KTData] Init database failed.(KT::CurrZentapDbEngine::Init)";

  static bool Save(Engine& engine) { return engine.SaveDbIntoDisk(engine.Content()); }
};

struct TrustedTable : TapTable<KT::TrustedZentapDbEngine, BluetoothDeviceSummary> {
  static constexpr const char* kName = "trusted devices";
  static constexpr const char* kFile = "TrustedZentapDeviceInfo2G12NJ9DS39D.db";
  static constexpr const char* kRows = "SELECT sumId, devName FROM trustedZentapDeviceInfo ORDER BY id";
  static constexpr const char* kInitFailure = "4 [KTData] Init database failed.(KT::TrustedZentapDbEngine::Init)";

  static bool Save(Engine& engine) { return engine.SaveZentapDbIntoDisk(); }
};

}  // namespace faults
