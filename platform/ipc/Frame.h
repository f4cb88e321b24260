// The frame, the unit of the wire protocol (docs/ipc.md): parsing and encoding, without any input or output.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "platform/ipc/Limits.h"

namespace platform::ipc {

// One frame. The defaults are what most frames carry. `name` and `payload` are views: a parsed frame's point into the
// buffer that it was parsed from.
struct Frame {
  std::int32_t receiver = kHubId;
  std::int32_t sender = kAnyId;
  std::int32_t code = 0;
  std::int32_t replyCode = kNoReplyCode;
  std::int32_t session = -1;
  std::int32_t status = 0;
  bool isLast = true;
  std::int32_t extra = 0;
  std::string_view name{};
  std::span<char> payload{};
};

enum class FrameState {
  Complete,
  Incomplete,        // so far nothing is wrong with it
  LengthOutOfRange,  // N below kMinFrameLength or above kMaxFrameLength
  NameTooLong,       // L reaches beyond the frame's end
  NameNotUtf8,
  IsLastNotBool,  // neither 0 nor 1
};

// What stands at the front of a buffer. `frame` and `bytes` (the frame as a whole) are set for Complete only.
struct FrameResult {
  FrameState state = FrameState::Incomplete;
  Frame frame{};
  std::span<char> bytes{};
};

// Looks at the front of `buffer`. A length out of range is reported as soon as the length is there, the other faults
// when the frame is complete.
FrameResult ParseFrame(std::span<char> buffer);

// How many bytes the frame at the front of `buffer` has in all; 0 while its length is not there yet. Not for a frame
// whose length is out of range.
std::size_t AnnouncedBytes(std::span<const char> buffer);

// Whether a frame with a name and payload of these sizes keeps within kMaxFrameLength.
bool FitsFrame(std::size_t nameBytes, std::size_t payloadBytes);

bool IsUtf8(std::string_view text);

// The size of the encoded frame.
std::size_t EncodedBytes(const Frame& frame);

// Appends the encoded frame to `out`, or throws std::bad_alloc and leaves `out` as it is. The frame must fit
// (FitsFrame) and its name be UTF-8.
void AppendFrame(const Frame& frame, std::vector<char>& out);

// Overwrites the sender in an encoded frame.
void SetSender(std::span<char> frameBytes, std::int32_t sender);

}  // namespace platform::ipc
