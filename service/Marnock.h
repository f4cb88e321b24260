// The service: the one object through which other processes reach the device store.
#pragma once

#include <array>
#include <cstddef>

#include "codec/Protocol.h"
#include "marnock_export.h"
#include "persistence/DevicePersistence.h"
#include "platform/ipc/IPCMessageClient.h"
#include "service/RequestCounts.h"
#include "service/ServiceStatus.h"
#include "service/StartupImport.h"

namespace KT {

// A process-wide singleton that is an IPC client of its own: it receives the eleven requests and answers each with one
// message. A host calls GetInstance and Init, and before its main returns StopDelivery (of IPCMessageClient), since at
// process exit Windows ends the delivery thread wherever it is.
//
// Requests run one at a time on the client's delivery thread; neither the service nor the store takes a lock.
class MARNOCK_EXPORT Marnock : public IPCMessageClient {
 public:
  // The one instance. The first call builds it: the IPC client, then the store, which loads the three database files.
  // What construction throws leaves this call, and a later call tries again. Any thread. The instance is destroyed at
  // process exit, and saves all three databases then.
  static Marnock& GetInstance();

  // Registers the request codes: requests are answered from here on. Throws std::system_error when the registration
  // mutex cannot be locked.
  void Init();

  // One handler a request, called by the IPC library. Which message, store operation and texts: RequestTable.h.
  void SetTrustedZentapDeviceInfo(TagIPCMessageItem& item);
  void GetTrustedZentapDeviceInfo(TagIPCMessageItem& item);
  void GetTrustedZentapDeviceInfoList(TagIPCMessageItem& item);
  void DeleteTrustedZentapDeviceInfo(TagIPCMessageItem& item);
  void SetCurrZentapDeviceInfo(TagIPCMessageItem& item);
  void GetCurrZentapDeviceInfo(TagIPCMessageItem& item);
  void GetCurrZentapDeviceInfoList(TagIPCMessageItem& item);
  void DeleteCurrZentapDeviceInfo(TagIPCMessageItem& item);
  void SetPeerDevice(TagIPCMessageItem& item);
  void GetPeerDevice(TagIPCMessageItem& item);
  void DeletePeerDevice(TagIPCMessageItem& item);

 private:
  friend class MarnockTestAccess;
  friend class StartupImport;
  friend class StatusAccess;

  Marnock();
  ~Marnock() override;

  void RegisterIpc();
  void UnRegisterIpc();

  // Posts `len` bytes at `data` to client `a` under code `b`, asking for an answer under code `c` (-1: none). The bytes
  // stay the caller's. Returns what PostIPCMessage returns.
  bool PostIpc(int a, int b, int c, char* data, int len);

  // The start-up import (StartupImport.h): the entry, and its two independent halves.
  void GetDeviceFromRegistry();
  void GetCurrDevice();
  void GetTrustedDevice();

  // The pattern of all eleven handlers, run with one row of the request table.
  template <class Row>
  void Handle(const Row& row, const TagIPCMessageItem& item);

  // Where the tally of a request code is kept: the codes follow the service's id.
  static constexpr std::size_t TallyIndex(int code) { return static_cast<std::size_t>(code - kServiceClientId - 1); }

  DevicePersistence store_;
  std::array<RequestTally, kRequestCount> tallies_;
};

}  // namespace KT
