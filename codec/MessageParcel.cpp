#include "codec/MessageParcel.h"

#include <new>

#include "codec/PayloadLimits.h"
#include "platform/logging/LogLine.h"

namespace KT {

namespace {

constexpr char kInit[] = "KT::MessageParcel::Init";

// Every message but a list makes fewer writes than this: one allocation for its results.
constexpr std::size_t kUsualWrites = 64;

}  // namespace

MessageParcel::MessageParcel(std::uint32_t size, std::uint8_t* buffer, bool allocate) {
  Init(buffer, static_cast<std::int32_t>(size), allocate);
}

MessageParcel::~MessageParcel() {
  stream_.reset();
  channel_.reset();
  FreeOwnBuffer();
}

void MessageParcel::Init(std::uint8_t* buffer, std::int32_t size, bool allocate) {
  if (size < 1 || size > kMaxPayloadBytes) {
    platform::LogFailure(kInit, "The parameter invalid.");
    return;
  }
  // An earlier stream would be left with a channel and a buffer that are gone.
  stream_.reset();
  FreeOwnBuffer();
  const auto capacity = static_cast<std::uint32_t>(size);
  // Cleared, so that no byte of this process's memory can leave it in a payload.
  buffer_ = allocate ? new (std::nothrow) std::uint8_t[capacity + kSpareBytes]() : buffer;
  if (buffer_ == nullptr) {
    platform::LogFailure(kInit, "msgBuffer is nullptr.");
    return;
  }
  ownsBuffer_ = allocate;
  channel_.reset(new (std::nothrow) cohesa::IpcBufferBuild(buffer_, capacity, !allocate));
  if (channel_ == nullptr) {
    platform::LogFailure(kInit, "ipcBuffer is nullptr.");
    return;
  }
  stream_.reset(new (std::nothrow) cohesa::DataStream(channel_.get()));
  if (stream_ == nullptr) platform::LogFailure(kInit, "ds is nullptr.");
}

std::int32_t MessageParcel::GetDataSize() const {
  std::int32_t sum = 0;
  for (const std::int32_t result : results_) {
    if (result < 0) return result;
    sum += result;
  }
  return sum;
}

void MessageParcel::Record(std::uint32_t result) {
  if (results_.empty()) results_.reserve(kUsualWrites);
  results_.push_back(static_cast<std::int32_t>(result));
}

void MessageParcel::FreeOwnBuffer() {
  if (ownsBuffer_) delete[] buffer_;
  ownsBuffer_ = false;
  buffer_ = nullptr;
}

}  // namespace KT
