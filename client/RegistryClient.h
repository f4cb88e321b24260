// The typed client of the registry: one member a request.
#pragma once

#include <chrono>
#include <string>

#include "client/CallStatus.h"
#include "client/RequestExchange.h"
#include "codec/Protocol.h"
#include "codec/messages/CurrZentapMessages.h"
#include "codec/messages/PeerSumMessages.h"
#include "codec/messages/TrustedZentapMessages.h"

namespace KT {

// What came of one call. `explanation` says in English what went wrong and is empty when the service answered.
template <class Response>
struct CallOutcome {
  CallStatus status = CallStatus::NoService;
  IpcStatus ipcStatus = IpcStatus::Answer;
  std::string explanation;
  Response response;

  // The service answered and did what was asked.
  bool Succeeded() const { return status == CallStatus::Answered && response.result == kResultSuccess; }
};

// The host's answer to a request for its status. The hub gives it or refuses; it has no failure codes of its own.
struct HostStatusResponse {
  int result = kResultSuccess;
  std::string document;  // JSON, docs/status.md
};

struct RegistryClientOptions {
  std::wstring pipeName = kPipeName;
  std::string pkgName = "marnock-client";    // who asks: logged by the service and echoed in most answers
  std::chrono::milliseconds timeout{5'000};  // for each call, connecting included
  bool waitForService = true;                // false: a call fails at once when no hub is there
};

// One connection to the hub, made at the first call and kept. Calls may come from any thread and run one after another;
// each blocks until it is answered or its time is over. Nothing is thrown but std::bad_alloc and std::system_error (a
// thread or mutex that the system refuses).
//
// Values are sent as they are. What the service cannot store or answer is checked by InputChecks.h, not here.
class RegistryClient {
 public:
  explicit RegistryClient(const RegistryClientOptions& options = {});

  const std::string& PkgName() const { return pkgName_; }
  const std::wstring& PipeName() const { return exchange_.PipeName(); }

  // Replaces what is stored under `sumId`. Fields that the table has no column for are not kept.
  CallOutcome<TrustedZentapDeviceSetResponse> SetTrustedZentapDeviceInfo(const std::string& sumId,
                                                                         const BluetoothDeviceSummary& info);
  CallOutcome<CurrZentapDeviceSetResponse> SetCurrZentapDeviceInfo(const std::string& sumId,
                                                                   const CurrZentapDeviceInfo& info);

  // An unknown sumId is answered with result 0 and a default record.
  CallOutcome<TrustedZentapDeviceGetResponse> GetTrustedZentapDeviceInfo(const std::string& sumId);
  CallOutcome<CurrZentapDeviceGetResponse> GetCurrZentapDeviceInfo(const std::string& sumId);

  // Refused with IpcStatus::UnsendableAnswer when the list passes kTrustedListReplyCapacityBytes or
  // kCurrentListReplyCapacityBytes.
  CallOutcome<TrustedZentapDeviceGetListResponse> GetTrustedZentapDeviceInfoList();
  CallOutcome<CurrZentapDeviceGetListResponse> GetCurrZentapDeviceInfoList();

  // Deleting what is not there is answered with result 0.
  CallOutcome<TrustedZentapDeviceDeleteResponse> DeleteTrustedZentapDeviceInfo(const std::string& sumId);
  CallOutcome<CurrZentapDeviceDeleteResponse> DeleteCurrZentapDeviceInfo(const std::string& sumId);

  CallOutcome<PeerSumSetResponse> SetPeerDevice(const std::string& udId, const std::string& sumId);
  // An unknown udId is answered with result 0 and an empty sumId.
  CallOutcome<PeerSumGetResponse> GetPeerDevice(const std::string& udId);
  CallOutcome<PeerSumDeleteResponse> DeletePeerDevice(const std::string& udId);

  // How the host is doing. Answered by its hub, so also while the service is busy; refused with IpcStatus::NoCallback
  // by a hub that offers no status.
  CallOutcome<HostStatusResponse> GetHostStatus();

 private:
  // Puts the package name and, where there is one, the key into `request` and sends it.
  template <class Request>
  CallOutcome<typename Request::Response> CallFor(const std::string& sumId, Request request = {});
  template <class Request>
  CallOutcome<typename Request::Response> Call(Request request);

  const std::string pkgName_;
  const std::chrono::milliseconds timeout_;
  RequestExchange exchange_;
};

}  // namespace KT
