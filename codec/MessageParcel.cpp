#include "codec/MessageParcel.h"

#include <algorithm>
#include <new>

#include "codec/PayloadLimits.h"
#include "platform/logging/LogLine.h"

namespace KT {

namespace {

constexpr char kInit[] = "KT::MessageParcel::Init";

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

void MessageParcel::FreeOwnBuffer() {
  if (ownsBuffer_) delete[] buffer_;
  ownsBuffer_ = false;
  buffer_ = nullptr;
}

}  // namespace KT
