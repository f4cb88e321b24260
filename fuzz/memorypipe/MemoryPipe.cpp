#include <algorithm>
#include <asio/error.hpp>
#include <asio/post.hpp>
#include <utility>

#include "fuzz/FuzzInput.h"
#include "platform/ipc/PipeTransport.h"

namespace platform::ipc {

namespace {

PipeListener::Handler g_onAccept;  // of the one listener

class MemoryListener : public PipeListener {
 public:
  void Accept(Handler handler) override { g_onAccept = std::move(handler); }
  void Close() override { g_onAccept = nullptr; }
};

}  // namespace

std::unique_ptr<PipeListener> ListenOnPipe(asio::io_context&, const PipeAddress&) {
  return std::make_unique<MemoryListener>();
}

void ConnectMemoryPipe(asio::io_context& context, std::shared_ptr<MemoryPipe> pipe) {
  fuzz::Require(g_onAccept != nullptr);
  asio::post(context,
             [handler = std::exchange(g_onAccept, nullptr), pipe = std::move(pipe)] { handler({}, Stream(pipe)); });
}

void MemoryPipe::Complete(TransferHandler& handler, const std::error_code& error, std::size_t bytes) {
  if (handler != nullptr) {
    asio::post(context_, [done = std::exchange(handler, nullptr), error, bytes] { done(error, bytes); });
  }
}

void MemoryPipe::Push(std::span<const char> bytes) {
  toHub_.insert(toHub_.end(), bytes.begin(), bytes.end());
  TryRead();
}

void MemoryPipe::Take(std::size_t mostBytes) {
  taken_ += std::min(mostBytes, written_.size() - taken_);
  TryAwaitedWrite();
}

void MemoryPipe::CloseByClient() {
  closedByClient_ = true;
  TryRead();
  TryAwaitedWrite();
}

void MemoryPipe::AwaitRead(asio::mutable_buffer into, TransferHandler handler) {
  fuzz::Require(onRead_ == nullptr && into.size() > 0);
  readInto_ = into;
  onRead_ = std::move(handler);
  TryRead();
}

void MemoryPipe::TryRead() {
  if (onRead_ == nullptr) return;
  const std::size_t count = std::min(toHub_.size(), readInto_.size());
  if (count > 0) {
    std::copy_n(toHub_.begin(), count, static_cast<char*>(readInto_.data()));
    toHub_.erase(toHub_.begin(), toHub_.begin() + static_cast<std::ptrdiff_t>(count));
    Complete(onRead_, {}, count);
  } else if (closedByClient_) {
    Complete(onRead_, asio::error::eof, 0);
  }
}

std::size_t MemoryPipe::Write(std::span<const char> bytes, std::error_code& error) {
  if (closedByHub_ || closedByClient_) {
    error = asio::error::broken_pipe;
    return 0;
  }
  error.clear();
  const std::size_t count = std::min(bytes.size(), capacity_ - (written_.size() - taken_));
  written_.insert(written_.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count));
  return count;
}

void MemoryPipe::AwaitWrite(asio::const_buffer from, TransferHandler handler) {
  fuzz::Require(onWritten_ == nullptr && from.size() > 0);
  writeFrom_ = from;
  onWritten_ = std::move(handler);
  TryAwaitedWrite();
}

void MemoryPipe::TryAwaitedWrite() {
  if (onWritten_ == nullptr) return;
  std::error_code error;
  const std::size_t count = Write({static_cast<const char*>(writeFrom_.data()), writeFrom_.size()}, error);
  if (count > 0 || error) Complete(onWritten_, error, count);
}

void MemoryPipe::CloseByHub() {
  if (std::exchange(closedByHub_, true)) return;
  Complete(onRead_, asio::error::operation_aborted, 0);
  Complete(onWritten_, asio::error::operation_aborted, 0);
}

}  // namespace platform::ipc
