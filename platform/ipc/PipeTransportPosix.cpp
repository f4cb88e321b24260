#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>

#include "platform/MachineRoot.h"
#include "platform/ipc/PipeTransport.h"
#include "platform/text/WideText.h"

namespace platform::ipc {

namespace {

using Protocol = asio::local::stream_protocol;

constexpr mode_t kFolderMode = 0700;
constexpr mode_t kFileMode = 0600;

std::error_code LastError() { return {errno, std::system_category()}; }

[[noreturn]] void Throw(const std::error_code& error, const std::string& what) { throw std::system_error(error, what); }

// The part of a pipe's name behind its last separator, in UTF-8.
std::string LastComponent(const std::wstring& pipeName) {
  const auto start = pipeName.find_last_of(L"\\/");
  return ToUtf8(start == std::wstring::npos ? pipeName : pipeName.substr(start + 1));
}

// The folder must be ours alone: who can write to it can put a socket of his own in our place.
void MakePrivateFolder(const std::filesystem::path& folder) {
  std::filesystem::create_directories(folder);
  struct stat status {};
  if (::lstat(folder.c_str(), &status) != 0) {
    Throw(LastError(), folder.string());
  }
  if (!S_ISDIR(status.st_mode) || status.st_uid != ::geteuid()) {
    Throw(std::make_error_code(std::errc::permission_denied), folder.string() + " is not a folder of this user");
  }
  if (::chmod(folder.c_str(), kFolderMode) != 0) {
    Throw(LastError(), folder.string());
  }
}

// An open file description with an exclusive lock; closing it releases the lock. The file itself stays: were it
// removed, two processes could each lock one of the same name.
class LockFile : public PipeClaim {
 public:
  // Throws std::system_error.
  explicit LockFile(const std::string& path)
      : descriptor_(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, kFileMode)) {
    if (descriptor_ < 0) {
      Throw(LastError(), path);
    }
  }
  LockFile(const LockFile&) = delete;
  LockFile& operator=(const LockFile&) = delete;
  ~LockFile() override { ::close(descriptor_); }

  bool TryLock() { return ::flock(descriptor_, LOCK_EX | LOCK_NB) == 0; }

 private:
  const int descriptor_;
};

// Removes a socket that nobody listens on. False when somebody does; a file of another kind is left for bind to report.
bool RemoveStaleSocket(const PipeAddress& address) {
  struct stat status {};
  if (::lstat(address.c_str(), &status) != 0 || !S_ISSOCK(status.st_mode)) {
    return true;
  }
  asio::io_context context;
  Stream probe(context);
  const std::error_code error = ConnectToPipe(probe, address);
  if (!error || IsBusy(error)) {
    return false;
  }
  if (::unlink(address.c_str()) != 0) {
    Throw(LastError(), address.string());
  }
  return true;
}

class SocketListener : public PipeListener {
 public:
  SocketListener(asio::io_context& context, const PipeAddress& address) : acceptor_(context), address_(address) {
    acceptor_.open(Protocol());
    acceptor_.bind(Protocol::endpoint(address.native()));
    if (::chmod(address.c_str(), kFileMode) != 0) {
      Throw(LastError(), "chmod");
    }
    acceptor_.listen();  // only from here on can anybody connect
  }
  ~SocketListener() override { Close(); }

  void Accept(Handler handler) override {
    acceptor_.async_accept([handler = std::move(handler)](std::error_code error, Stream stream) {
      if (!error) {
        stream.non_blocking(true, error);
      }
      handler(error, std::move(stream));
    });
  }

  void Close() override {
    if (acceptor_.is_open()) {
      std::error_code ignored;  // there is nobody left to tell
      acceptor_.close(ignored);
      ::unlink(address_.c_str());
    }
  }

 private:
  Protocol::acceptor acceptor_;
  PipeAddress address_;
};

}  // namespace

PipeAddress ResolvePipe(const std::wstring& pipeName) {
  const std::string name = LastComponent(pipeName);
  const std::string path = MachineRoot() + "/pipe/" + name;
  if (name.empty() || name == "." || name == "..") {
    Throw(std::make_error_code(std::errc::invalid_argument), "no pipe can be called " + path);
  }
  if (path.size() >= sizeof(sockaddr_un::sun_path)) {
    Throw(std::make_error_code(std::errc::filename_too_long), "too long for the path of a socket: " + path);
  }
  return path;
}

std::unique_ptr<PipeClaim> ClaimPipe(const PipeAddress& address) {
  MakePrivateFolder(address.parent_path());
  const std::string lockPath = address.string() + ".lock";
  auto lock = std::make_unique<LockFile>(lockPath);
  if (!lock->TryLock()) {
    if (errno != EWOULDBLOCK) {
      Throw(LastError(), lockPath);
    }
    return nullptr;
  }
  return RemoveStaleSocket(address) ? std::move(lock) : nullptr;
}

std::unique_ptr<PipeListener> ListenOnPipe(asio::io_context& context, const PipeAddress& address) try {
  return std::make_unique<SocketListener>(context, address);
} catch (const std::system_error& error) {
  Throw(error.code(), "cannot listen on " + address.string());
}

std::error_code ConnectToPipe(Stream& stream, const PipeAddress& address) {
  std::error_code error;
  stream.open(Protocol(), error);
  if (!error) {
    stream.non_blocking(true, error);  // first, so that a full backlog is an error instead of a wait
  }
  if (!error) {
    stream.connect(Protocol::endpoint(address.native()), error);
  }
  if (error) {
    std::error_code ignored;
    stream.close(ignored);
  }
  return error;
}

bool IsBusy(const std::error_code& error) {
  return error == asio::error::no_buffer_space;  // what Asio makes of EAGAIN, a full backlog
}

std::uint64_t PeerProcess(Stream& stream) {
  ucred peer{};
  socklen_t size = sizeof peer;
  const bool known = ::getsockopt(stream.native_handle(), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0;
  return known ? static_cast<std::uint64_t>(peer.pid) : 0;
}

std::uint64_t OwnProcess() { return static_cast<std::uint64_t>(::getpid()); }

std::size_t TryWrite(Stream& stream, std::span<const char> bytes, std::error_code& error) {
  const std::size_t taken = stream.write_some(asio::buffer(bytes.data(), bytes.size()), error);
  if (error == asio::error::would_block) {
    error.clear();
  }
  return taken;
}

}  // namespace platform::ipc
