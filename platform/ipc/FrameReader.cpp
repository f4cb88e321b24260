#include "platform/ipc/FrameReader.h"

#include <algorithm>

namespace platform::ipc {

std::span<char> FrameReader::Space() {
  const std::span<char> partial = Buffered();
  std::copy(partial.begin(), partial.end(), buffer_.begin());
  begin_ = 0;
  end_ = partial.size();
  if (AnnouncedBytes(Buffered()) > buffer_.size()) {
    buffer_.resize(kMaxFrameBytes);
  }
  return std::span(buffer_).subspan(end_);
}

}  // namespace platform::ipc
