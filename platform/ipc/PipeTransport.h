// Byte streams between processes under a pipe's name: a named pipe on Windows, a Unix-domain stream socket on POSIX.
#pragma once

#include <asio/io_context.hpp>
#include <asio/local/stream_protocol.hpp>
#include <asio/windows/stream_handle.hpp>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <system_error>

namespace platform::ipc {

#if defined(ASIO_HAS_WINDOWS_STREAM_HANDLE)
using Stream = asio::windows::stream_handle;
#else
using Stream = asio::local::stream_protocol::socket;
#endif

// A pipe's name as the system knows it: the name itself on Windows, the socket's path on POSIX.
using PipeAddress = std::filesystem::path;

// POSIX: "pipe/" and the name's last component in the machine root as it is now (platform/MachineRoot.h). Throws
// std::system_error, which names the path, for one that is too long for a socket address, and for an empty component.
PipeAddress ResolvePipe(const std::wstring& pipeName);

// The right to be the only hub of a pipe. Destroying it gives the right back.
class PipeClaim {
 public:
  virtual ~PipeClaim() = default;
};

// Null when another hub has the claim, or (POSIX) listens on the socket. Makes the socket's folder and removes a socket
// left by a hub that died. Throws std::system_error, which names what failed, where the claim can't be decided.
std::unique_ptr<PipeClaim> ClaimPipe(const PipeAddress& address);

// Takes connections. Not thread-safe.
class PipeListener {
 public:
  using Handler = std::function<void(std::error_code, Stream)>;

  // As Close.
  virtual ~PipeListener() = default;

  // Waits for one connection. The handler runs in the context; after an error another Accept may succeed.
  virtual void Accept(Handler handler) = 0;

  // No more connections. A handler that still waits gets operation_aborted, or is destroyed with its context.
  virtual void Close() = 0;
};

// Needs the claim. Throws std::system_error, which names the pipe.
std::unique_ptr<PipeListener> ListenOnPipe(asio::io_context& context, const PipeAddress& address);

// Connects `stream` without ever waiting. An error leaves it closed.
std::error_code ConnectToPipe(Stream& stream, const PipeAddress& address);

// Whether a failed ConnectToPipe found a hub that was merely too busy to take one more connection now.
bool IsBusy(const std::error_code& error);

// The id of the process at the other end of an accepted stream; 0 when it is not known.
std::uint64_t PeerProcess(Stream& stream);
std::uint64_t OwnProcess();

// Writes what goes without waiting and returns how much that was, 0 without an error when nothing does. Windows: always
// nothing, since an overlapped write starts at once anyway.
std::size_t TryWrite(Stream& stream, std::span<const char> bytes, std::error_code& error);

}  // namespace platform::ipc
