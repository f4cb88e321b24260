// The numbers of the wire protocol and the quotas of its implementation. What a hub grants one peer: HubLimits.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>

namespace platform::ipc {

// Frames. The length field counts what follows it: the fixed fields up to the name's length, the name, the payload.
inline constexpr std::size_t kLengthFieldBytes = 4;
inline constexpr std::size_t kMinFrameLength = 31;
inline constexpr std::size_t kMaxFrameLength = 65'536;
inline constexpr std::size_t kFrameHeaderBytes = kLengthFieldBytes + kMinFrameLength;
inline constexpr std::size_t kMaxFrameBytes = kLengthFieldBytes + kMaxFrameLength;

// Ids and codes.
inline constexpr std::int32_t kHubId = 0;
inline constexpr std::int32_t kAnyId = -1;                // in a hello: no wish; granted as an id: none
inline constexpr std::int32_t kFirstServiceId = 0x10000;  // from here on for connections of the hub's own process
inline constexpr std::int32_t kHelloCode = 1;
inline constexpr std::int32_t kStatusCode = 2;  // to the hub: asks for its status document
inline constexpr std::int32_t kNoReplyCode = -1;
inline constexpr std::int32_t kProtocolVersion = 1;

// What a connection's read buffer holds before a larger frame makes it grow: some dozens of ordinary requests.
inline constexpr std::size_t kReadBufferBytes = 16 * 1024;
// A send buffer that grew beyond this gives its memory back once it is empty.
inline constexpr std::size_t kKeptSendBufferBytes = 64 * 1024;

// Once so many connections were open at one time, the hub gives memory back to the system when the last of other
// processes has gone.
inline constexpr std::size_t kBurstConnections = 16;

// A client queues this much before PostIPCMessage refuses more.
inline constexpr std::size_t kClientQueueBytes = 1024 * 1024;
// A service runs no further callback while this much of what it sent still waits, so that none of its answers is
// refused by the queue above. The hub always reads from services, so the wait is short.
inline constexpr std::size_t kServicePauseBytes = 256 * 1024;

// A client's waits between attempts to reach the hub.
inline constexpr std::chrono::milliseconds kFirstRetryDelay{20};
inline constexpr std::chrono::milliseconds kLastRetryDelay{1'000};
// The hub's wait after an accept that failed, for example because the process is out of descriptors.
inline constexpr std::chrono::milliseconds kAcceptRetryDelay{100};
// What a thread waits after an exception that escaped a handler, so that want of memory does not keep it busy.
inline constexpr std::chrono::milliseconds kPauseAfterFailure{20};
// How long an orderly stop waits for what is still to be sent.
inline constexpr std::chrono::milliseconds kStopTimeout{500};

}  // namespace platform::ipc
