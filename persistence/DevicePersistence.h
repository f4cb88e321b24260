// The one object through which the service reaches the stored devices.
#pragma once

#include <string>
#include <vector>

#include "codec/BluetoothDeviceSummary.h"
#include "codec/CurrZentapDeviceInfo.h"
#include "codec/Protocol.h"
#include "persistence/CurrZentapDbEngine.h"
#include "persistence/PeerDeviceDbEngine.h"
#include "persistence/SaveCounts.h"
#include "persistence/TrustedZentapDbEngine.h"

namespace KT {

// Thirteen operations on three tables. Each answers kResultSuccess or, after logging, its failure code (kResult... of
// codec/Protocol.h). A change that succeeds is saved to the disk before it returns; a save that fails is logged and
// does not change the answer, nor is anything saved after a change that failed. How the tables treat keys and rows: the
// engines' headers.
//
// No locks: one call at a time.
class DevicePersistence {
 public:
  // Loads the peer, current and trusted tables, in that order. What cannot be loaded is logged, and the operations on
  // it fail.
  DevicePersistence();

  // Saves the peer, trusted and current tables, in that order.
  ~DevicePersistence();

  DevicePersistence(const DevicePersistence&) = delete;
  DevicePersistence& operator=(const DevicePersistence&) = delete;

  // Set replaces the rows of that key; Get leaves its output as it is when there is no such row.
  int SetTrustedZentapDeviceInfo(const std::string& sumId, const BluetoothDeviceSummary& info);
  int SetTrustedZentapDeviceInfoList(const std::vector<BluetoothDeviceSummary>& list);
  int DeleteTrustedZentapDeviceInfo(const std::string& sumId);
  int GetTrustedZentapDeviceInfo(const std::string& sumId, BluetoothDeviceSummary& info);
  int GetTrustedZentapDeviceInfoList(std::vector<BluetoothDeviceSummary>& list);

  int SetCurrZentapDeviceInfo(const std::string& sumId, const CurrZentapDeviceInfo& info);
  int SetCurrZentapDeviceInfoList(const std::vector<CurrZentapDeviceInfo>& list);
  int DeleteCurrZentapDeviceInfo(const std::string& sumId);
  int GetCurrZentapDeviceInfo(const std::string& sumId, CurrZentapDeviceInfo& info);
  int GetCurrZentapDeviceInfoList(std::vector<CurrZentapDeviceInfo>& list);

  int SetPeerDevice(const std::string& udId, const std::string& sumId);
  int DeletePeerDevice(const std::string& udId);
  int GetPeerDevice(const std::string& udId, std::string& sumId);

  // Whether a file with the bare database name, without any engine's prefix, lies in the console user's folder. The
  // engines never write it.
  bool IsDeviceDbExist() const;

  // The saves of one table so far. Any thread.
  SaveCounts Saves(StoreTable table) const;

  // Sets the observer, null for none. Not while a change is made.
  void SetUnsavedChangeObserver(UnsavedChangeObserver observer) { onUnsavedChange_ = observer; }

 private:
  PeerDeviceDbEngine peer_;
  CurrZentapDbEngine current_;
  TrustedZentapDbEngine trusted_;
  UnsavedChangeObserver onUnsavedChange_ = nullptr;
};

}  // namespace KT
