// What every client and the service agree on besides the messages themselves.
#pragma once

namespace KT {

// The pipe of the assistant's IPC hub.
inline constexpr wchar_t kPipeName[] = L"\\\\.\\Pipe\\iLumoraAssistant";

// The service's own client id there; the codes of its requests follow it (kCode of each request message).
inline constexpr int kServiceClientId = 0xc40000;

// Capacity of a reply's payload in bytes. The two lists differ although the current records are the larger ones.
inline constexpr int kReplyCapacityBytes = 1024;
inline constexpr int kTrustedListReplyCapacityBytes = 10240;
inline constexpr int kCurrentListReplyCapacityBytes = 4096;

// Values of `result` in the responses.
inline constexpr int kResultSuccess = 0;
inline constexpr int kResultReadOrPeerFailed = -4996;  // a read failed, or any peer operation
inline constexpr int kResultTapChangeFailed = -4999;   // a change to a tap-device table failed

}  // namespace KT
