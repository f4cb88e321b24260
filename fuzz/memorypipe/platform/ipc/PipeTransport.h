// Pipes in memory, under the names of platform/ipc/PipeTransport.h: the hub's sources are compiled against this header
// in place of that one, so that a fuzzer sees and steers every byte without a system call.
#pragma once

#include <asio/buffer.hpp>
#include <asio/io_context.hpp>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <span>
#include <system_error>
#include <vector>

namespace platform::ipc {

using PipeAddress = std::filesystem::path;
using TransferHandler = std::function<void(const std::error_code&, std::size_t)>;

// One connection: what lies between a client, which is the fuzzer, and the hub's Stream. Handlers are posted to the
// context.
class MemoryPipe {
 public:
  // `process`: whose the client is; `capacityBytes`: how much the system takes of what the client has not read.
  MemoryPipe(asio::io_context& context, std::uint64_t process, std::size_t capacityBytes)
      : process_(process), context_(context), capacity_(capacityBytes) {}

  // For the client.
  void Push(std::span<const char> bytes);
  void Take(std::size_t mostBytes);
  void CloseByClient();
  bool IsClosedByHub() const { return closedByHub_; }
  std::size_t TakenBytes() const { return taken_; }
  // All that the hub has written so far, whether the client took it or not.
  const std::vector<char>& Written() const { return written_; }

  // For the hub's stream.
  std::uint64_t Process() const { return process_; }
  std::size_t Write(std::span<const char> bytes, std::error_code& error);
  void AwaitRead(asio::mutable_buffer into, TransferHandler handler);
  void AwaitWrite(asio::const_buffer from, TransferHandler handler);
  void CloseByHub();

 private:
  void Complete(TransferHandler& handler, const std::error_code& error, std::size_t bytes);
  void TryRead();
  void TryAwaitedWrite();

  const std::uint64_t process_;
  asio::io_context& context_;
  const std::size_t capacity_;
  std::vector<char> toHub_;
  std::vector<char> written_;
  std::size_t taken_ = 0;
  bool closedByClient_ = false;
  bool closedByHub_ = false;
  asio::mutable_buffer readInto_;
  TransferHandler onRead_;
  asio::const_buffer writeFrom_;
  TransferHandler onWritten_;
};

// The hub's end. Closes when it goes, as a socket does.
class Stream {
 public:
  explicit Stream(std::shared_ptr<MemoryPipe> pipe) : pipe_(std::move(pipe)) {}
  ~Stream() {
    std::error_code ignored;
    close(ignored);
  }
  Stream(Stream&&) = default;
  Stream& operator=(Stream&&) = delete;

  template <class Handler>
  void async_read_some(const asio::mutable_buffer& into, Handler&& handler) {
    pipe_->AwaitRead(into, std::forward<Handler>(handler));
  }
  template <class Handler>
  void async_write_some(const asio::const_buffer& from, Handler&& handler) {
    pipe_->AwaitWrite(from, std::forward<Handler>(handler));
  }
  void close(std::error_code& error) {
    error.clear();
    if (pipe_ != nullptr) pipe_->CloseByHub();
  }
  MemoryPipe& Pipe() { return *pipe_; }

 private:
  std::shared_ptr<MemoryPipe> pipe_;
};

class PipeListener {
 public:
  using Handler = std::function<void(std::error_code, Stream)>;
  virtual ~PipeListener() = default;
  virtual void Accept(Handler handler) = 0;
  virtual void Close() = 0;
};

std::unique_ptr<PipeListener> ListenOnPipe(asio::io_context& context, const PipeAddress& address);

// Has the listener accept `pipe`. It must be listening and waiting for a connection.
void ConnectMemoryPipe(asio::io_context& context, std::shared_ptr<MemoryPipe> pipe);

inline std::uint64_t PeerProcess(Stream& stream) { return stream.Pipe().Process(); }
inline std::uint64_t OwnProcess() { return 1; }

inline std::size_t TryWrite(Stream& stream, std::span<const char> bytes, std::error_code& error) {
  return stream.Pipe().Write(bytes, error);
}

}  // namespace platform::ipc
