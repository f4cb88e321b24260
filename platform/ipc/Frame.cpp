#include "platform/ipc/Frame.h"

#include <utf8.h>

#include <algorithm>
#include <array>

namespace platform::ipc {

namespace {

// Where each field begins in a frame.
constexpr std::size_t kReceiverAt = 4;
constexpr std::size_t kSenderAt = 8;
constexpr std::size_t kCodeAt = 12;
constexpr std::size_t kReplyCodeAt = 16;
constexpr std::size_t kSessionAt = 20;
constexpr std::size_t kStatusAt = 24;
constexpr std::size_t kIsLastAt = 28;
constexpr std::size_t kExtraAt = 29;
constexpr std::size_t kNameLengthAt = 33;
static_assert(kNameLengthAt + 2 == kFrameHeaderBytes);

template <std::size_t kBytes>
std::uint32_t Load(const char* from) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < kBytes; ++i) {
    value |= std::uint32_t{static_cast<unsigned char>(from[i])} << (8 * i);
  }
  return value;
}

template <std::size_t kBytes>
void Store(std::uint32_t value, char* to) {
  for (std::size_t i = 0; i < kBytes; ++i) {
    to[i] = static_cast<char>(static_cast<unsigned char>(value >> (8 * i)));
  }
}

std::int32_t LoadInt(const char* from) { return static_cast<std::int32_t>(Load<4>(from)); }

void StoreInt(std::int32_t value, char* to) { Store<4>(static_cast<std::uint32_t>(value), to); }

FrameResult ParseWhole(std::span<char> bytes) {
  const char* const at = bytes.data();
  const std::size_t nameBytes = Load<2>(at + kNameLengthAt);
  if (kFrameHeaderBytes + nameBytes > bytes.size()) {
    return {.state = FrameState::NameTooLong};
  }
  const std::string_view name(at + kFrameHeaderBytes, nameBytes);
  if (!IsUtf8(name)) {
    return {.state = FrameState::NameNotUtf8};
  }
  const auto isLast = static_cast<unsigned char>(at[kIsLastAt]);
  if (isLast > 1) {
    return {.state = FrameState::IsLastNotBool};
  }
  const Frame frame{.receiver = LoadInt(at + kReceiverAt),
                    .sender = LoadInt(at + kSenderAt),
                    .code = LoadInt(at + kCodeAt),
                    .replyCode = LoadInt(at + kReplyCodeAt),
                    .session = LoadInt(at + kSessionAt),
                    .status = LoadInt(at + kStatusAt),
                    .isLast = isLast == 1,
                    .extra = LoadInt(at + kExtraAt),
                    .name = name,
                    .payload = bytes.subspan(kFrameHeaderBytes + nameBytes)};
  return {.state = FrameState::Complete, .frame = frame, .bytes = bytes};
}

// Half a frame in a stream would spoil all that follows: what has no room fails before anything is appended. The room
// at least doubles where it has to grow.
void MakeRoom(std::vector<char>& out, std::size_t more) {
  const std::size_t needed = out.size() + more;
  if (needed > out.capacity()) {
    out.reserve(std::max(needed, 2 * out.capacity()));
  }
}

}  // namespace

FrameResult ParseFrame(std::span<char> buffer) {
  if (buffer.size() < kLengthFieldBytes) {
    return {};
  }
  const std::size_t length = Load<4>(buffer.data());
  if (length < kMinFrameLength || length > kMaxFrameLength) {
    return {.state = FrameState::LengthOutOfRange};
  }
  const std::size_t whole = kLengthFieldBytes + length;
  return buffer.size() < whole ? FrameResult{} : ParseWhole(buffer.first(whole));
}

std::size_t AnnouncedBytes(std::span<const char> buffer) {
  return buffer.size() < kLengthFieldBytes ? 0 : kLengthFieldBytes + std::size_t{Load<4>(buffer.data())};
}

bool FitsFrame(std::size_t nameBytes, std::size_t payloadBytes) {
  // One after the other, so that no sum can overflow. The name's own length field is no tighter than the frame.
  constexpr std::size_t kRoom = kMaxFrameLength - kMinFrameLength;
  static_assert(kRoom <= 0xFFFF);
  return nameBytes <= kRoom && payloadBytes <= kRoom - nameBytes;
}

bool IsUtf8(std::string_view text) { return utf8::is_valid(text.begin(), text.end()); }

std::size_t EncodedBytes(const Frame& frame) { return kFrameHeaderBytes + frame.name.size() + frame.payload.size(); }

void AppendFrame(const Frame& frame, std::vector<char>& out) {
  MakeRoom(out, EncodedBytes(frame));
  std::array<char, kFrameHeaderBytes> header{};
  Store<4>(static_cast<std::uint32_t>(EncodedBytes(frame) - kLengthFieldBytes), header.data());
  StoreInt(frame.receiver, header.data() + kReceiverAt);
  StoreInt(frame.sender, header.data() + kSenderAt);
  StoreInt(frame.code, header.data() + kCodeAt);
  StoreInt(frame.replyCode, header.data() + kReplyCodeAt);
  StoreInt(frame.session, header.data() + kSessionAt);
  StoreInt(frame.status, header.data() + kStatusAt);
  header[kIsLastAt] = frame.isLast ? 1 : 0;
  StoreInt(frame.extra, header.data() + kExtraAt);
  Store<2>(static_cast<std::uint32_t>(frame.name.size()), header.data() + kNameLengthAt);
  out.insert(out.end(), header.begin(), header.end());
  out.insert(out.end(), frame.name.begin(), frame.name.end());
  out.insert(out.end(), frame.payload.begin(), frame.payload.end());
}

void SetSender(std::span<char> frameBytes, std::int32_t sender) { StoreInt(sender, frameBytes.data() + kSenderAt); }

}  // namespace platform::ipc
