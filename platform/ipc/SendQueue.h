// What waits to be sent on one connection.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "platform/ipc/Frame.h"
#include "platform/ipc/PipeTransport.h"

namespace platform::ipc {

// Two buffers: frames gather in one while the other, which the system may be reading from, stays where it is. So frames
// that come up during a send leave together with the next one. Guarded by its owner; at most one send is under way.
class SendQueue {
 public:
  std::size_t WaitingBytes() const { return gathering_.size() + sending_.size() - sent_; }
  bool Empty() const { return WaitingBytes() == 0; }

  // Queues a frame, encoded or not, unless more than `limit` bytes would wait then: false, and nothing is taken.
  bool Add(std::span<const char> frameBytes, std::size_t limit);
  bool Add(const Frame& frame, std::size_t limit);

  // Sends what the system takes at once and, if something is left, goes on in the background: `onProgress` then runs
  // once as a handler of the stream's context, with (error, bytes), and must call Progress. Does nothing while a send
  // is under way. The queue must outlive the handler. After an error, which it returns, nothing waits any more.
  template <class OnProgress>
  std::error_code Flush(Stream& stream, OnProgress&& onProgress);

  // The background send is over and took `bytes`.
  void Progress(std::size_t bytes);

 private:
  std::span<const char> Chunk();
  void Sent(std::size_t bytes);
  void Clear();

  std::vector<char> gathering_;
  std::vector<char> sending_;
  std::size_t sent_ = 0;  // of sending_
  bool underWay_ = false;
};

template <class OnProgress>
std::error_code SendQueue::Flush(Stream& stream, OnProgress&& onProgress) {
  while (!underWay_ && !Empty()) {
    const std::span<const char> chunk = Chunk();
    std::error_code error;
    const std::size_t taken = TryWrite(stream, chunk, error);
    if (error) {
      Clear();
      return error;
    }
    Sent(taken);
    if (taken < chunk.size()) {
      const auto rest = chunk.subspan(taken);
      stream.async_write_some(asio::buffer(rest.data(), rest.size()), std::forward<OnProgress>(onProgress));
      underWay_ = true;
    }
  }
  return {};
}

}  // namespace platform::ipc
