#include "platform/ipc/SendQueue.h"

namespace platform::ipc {

bool SendQueue::Add(std::span<const char> frameBytes, std::size_t limit) {
  if (WaitingBytes() + frameBytes.size() > limit) {
    return false;
  }
  gathering_.insert(gathering_.end(), frameBytes.begin(), frameBytes.end());
  return true;
}

bool SendQueue::Add(const Frame& frame, std::size_t limit) {
  if (WaitingBytes() + EncodedBytes(frame) > limit) {
    return false;
  }
  AppendFrame(frame, gathering_);
  return true;
}

void SendQueue::Progress(std::size_t bytes) {
  underWay_ = false;
  Sent(bytes);
}

std::span<const char> SendQueue::Chunk() {
  if (sending_.empty()) {
    sending_.swap(gathering_);
  }
  return std::span<const char>(sending_).subspan(sent_);
}

void SendQueue::Sent(std::size_t bytes) {
  sent_ += bytes;
  if (sent_ < sending_.size()) {
    return;
  }
  sending_.clear();
  sent_ = 0;
  if (sending_.capacity() > kKeptSendBufferBytes) {
    sending_.shrink_to_fit();
  }
}

void SendQueue::Clear() {
  gathering_.clear();
  sending_.clear();
  sent_ = 0;
}

}  // namespace platform::ipc
