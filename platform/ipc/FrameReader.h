// Takes a byte stream apart into frames, however the bytes arrive.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "platform/ipc/Frame.h"

namespace platform::ipc {

// A buffer of kReadBufferBytes, which takes many frames per read and grows to kMaxFrameBytes, never beyond, for a frame
// that needs it. Use: read into Space, Commit what arrived, then Next and Pop until Next finds no complete frame.
class FrameReader {
 public:
  FrameReader() : buffer_(kReadBufferBytes) {}

  // Where the next bytes go; not empty. Only after Next has said Incomplete. Spans from before are invalid afterwards.
  std::span<char> Space();

  // Adds the first `count` bytes of Space to what is buffered.
  void Commit(std::size_t count) { end_ += count; }

  // The frame at the front; it stays there.
  FrameResult Next() { return ParseFrame(Buffered()); }

  // Takes the complete frame `bytes` of the last Next off the front. Its span stays valid until Space.
  void Pop(std::span<const char> bytes) { begin_ += bytes.size(); }

  bool Empty() const { return begin_ == end_; }

 private:
  std::span<char> Buffered() { return std::span(buffer_).subspan(begin_, end_ - begin_); }

  std::vector<char> buffer_;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
};

}  // namespace platform::ipc
