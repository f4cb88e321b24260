// Where the service is reached and how its requests are numbered: what every client and the service agree on.
#pragma once

namespace KT {

// The pipe of the assistant's IPC hub.
inline constexpr wchar_t kPipeName[] = L"\\\\.\\Pipe\\iLumoraAssistant";

// The service's own client id there; the request codes follow it.
inline constexpr int kServiceClientId = 0xc40000;

enum RequestCode : int {
  kSetTrustedZentapDeviceInfo = 0xc40001,
  kGetTrustedZentapDeviceInfo = 0xc40002,
  kGetTrustedZentapDeviceInfoList = 0xc40003,
  kDeleteTrustedZentapDeviceInfo = 0xc40004,
  kSetCurrZentapDeviceInfo = 0xc40005,
  kGetCurrZentapDeviceInfo = 0xc40006,
  kGetCurrZentapDeviceInfoList = 0xc40007,
  kDeleteCurrZentapDeviceInfo = 0xc40008,
  kSetPeerDevice = 0xc40009,
  kGetPeerDevice = 0xc4000a,
  kDeletePeerDevice = 0xc4000b,
};

// Capacity of a reply's payload in bytes. The two lists differ although the current records are the larger ones.
inline constexpr int kReplyCapacityBytes = 1024;
inline constexpr int kTrustedListReplyCapacityBytes = 10240;
inline constexpr int kCurrentListReplyCapacityBytes = 4096;

// Values of `result` in the responses.
inline constexpr int kResultSuccess = 0;
inline constexpr int kResultReadOrPeerFailed = -4996;  // a read failed, or any peer operation
inline constexpr int kResultTapChangeFailed = -4999;   // a change to a tap-device table failed

}  // namespace KT
