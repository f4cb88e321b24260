// Asio's headers bring windows.h, and winsock2.h before it.
#include <asio/post.hpp>
#include <asio/windows/overlapped_ptr.hpp>
#include <cwctype>
#include <new>
#include <utility>

#include "platform/ipc/PipeSecurity.h"
#include "platform/ipc/PipeTransport.h"

namespace platform::ipc {

namespace {

constexpr DWORD kPipeBufferBytes = 64 * 1024;

std::error_code LastError() { return {static_cast<int>(::GetLastError()), std::system_category()}; }

[[noreturn]] void Throw(const std::error_code& error, const std::string& what) { throw std::system_error(error, what); }

// Names of mutexes tell case apart, those of pipes don't.
std::wstring MutexName(const PipeAddress& address) {
  std::wstring name = address.filename().wstring();
  for (wchar_t& letter : name) {
    letter = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(letter)));
  }
  return L"Global\\marnock-hub-" + name;
}

class NamedMutex : public PipeClaim {
 public:
  explicit NamedMutex(const std::wstring& name)
      : handle_(::CreateMutexW(nullptr, FALSE, name.c_str())), outcome_(LastError()) {}
  NamedMutex(const NamedMutex&) = delete;
  NamedMutex& operator=(const NamedMutex&) = delete;
  ~NamedMutex() override {
    if (IsOpen()) {
      ::CloseHandle(handle_);
    }
  }

  bool IsOpen() const { return handle_ != nullptr; }
  // Why it is not open, or ERROR_ALREADY_EXISTS for one that was there before.
  const std::error_code& Outcome() const { return outcome_; }

 private:
  const HANDLE handle_;
  const std::error_code outcome_;
};

class NamedPipeListener : public PipeListener {
 public:
  NamedPipeListener(asio::io_context& context, const PipeAddress& address)
      : context_(context), name_(address.wstring()), instance_(context) {
    const std::error_code error = MakeInstance(FILE_FLAG_FIRST_PIPE_INSTANCE);
    if (error) {
      Throw(error, "cannot create the pipe " + address.string());
    }
  }
  ~NamedPipeListener() override { Close(); }

  void Accept(Handler handler) override;
  void Close() override;

 private:
  std::error_code MakeInstance(DWORD flags);
  void OnConnected(std::error_code error, const Handler& handler);
  void AcceptAgain(const Handler& handler);

  asio::io_context& context_;
  const std::wstring name_;
  const PipeSecurity security_;
  Stream instance_;  // the one that the next client gets
  bool closed_ = false;
};

std::error_code NamedPipeListener::MakeInstance(DWORD flags) {
  SECURITY_ATTRIBUTES attributes{sizeof attributes, security_.Descriptor(), FALSE};
  const HANDLE handle =
      ::CreateNamedPipeW(name_.c_str(), PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED | flags,
                         PIPE_TYPE_BYTE | PIPE_READMODE_BYTE | PIPE_WAIT | PIPE_REJECT_REMOTE_CLIENTS,
                         PIPE_UNLIMITED_INSTANCES, kPipeBufferBytes, kPipeBufferBytes, 0, &attributes);
  if (handle == INVALID_HANDLE_VALUE) {
    return LastError();
  }
  std::error_code error;
  instance_.assign(handle, error);
  if (error) {
    ::CloseHandle(handle);
  }
  return error;
}

void NamedPipeListener::Accept(Handler handler) {
  if (!instance_.is_open()) {
    if (const std::error_code error = MakeInstance(0)) {
      asio::post(context_, [this, error, handler = std::move(handler)] { handler(error, Stream(context_)); });
      return;
    }
  }
  asio::windows::overlapped_ptr waiting(
      context_,
      [this, handler = std::move(handler)](const std::error_code& error, std::size_t) { OnConnected(error, handler); });
  const BOOL connected = ::ConnectNamedPipe(instance_.native_handle(), waiting.get());
  const DWORD reason = ::GetLastError();
  if (connected != FALSE || reason == ERROR_PIPE_CONNECTED) {
    waiting.complete({}, 0);
  } else if (reason == ERROR_IO_PENDING) {
    waiting.release();
  } else {
    waiting.complete({static_cast<int>(reason), std::system_category()}, 0);
  }
}

void NamedPipeListener::OnConnected(std::error_code error, const Handler& handler) {
  if (closed_) {
    handler(asio::error::operation_aborted, Stream(context_));
    return;
  }
  Stream connected = std::exchange(instance_, Stream(context_));
  // At once, so that there is always an instance for the next client to find. A failure shows in the next Accept.
  MakeInstance(0);
  if (error.value() == ERROR_NO_DATA) {
    AcceptAgain(handler);  // the client has gone again
  } else {
    handler(error, std::move(connected));
  }
}

void NamedPipeListener::AcceptAgain(const Handler& handler) try { Accept(handler); } catch (const std::bad_alloc&) {
  handler(asio::error::no_memory, Stream(context_));
}

void NamedPipeListener::Close() {
  closed_ = true;
  std::error_code ignored;  // there is nobody left to tell
  instance_.close(ignored);
}

}  // namespace

PipeAddress ResolvePipe(const std::wstring& pipeName) { return pipeName; }

std::unique_ptr<PipeClaim> ClaimPipe(const PipeAddress& address) {
  auto claim = std::make_unique<NamedMutex>(MutexName(address));
  const std::error_code& outcome = claim->Outcome();
  if (claim->IsOpen()) {
    return outcome.value() == ERROR_ALREADY_EXISTS ? nullptr : std::move(claim);
  }
  // Another account's mutex, which this one may not open, is a claim as well.
  if (outcome.value() == ERROR_ACCESS_DENIED) {
    return nullptr;
  }
  Throw(outcome, "cannot create the mutex of the pipe " + address.string());
}

std::unique_ptr<PipeListener> ListenOnPipe(asio::io_context& context, const PipeAddress& address) {
  return std::make_unique<NamedPipeListener>(context, address);
}

std::error_code ConnectToPipe(Stream& stream, const PipeAddress& address) {
  // Not GENERIC_WRITE, which asks for FILE_CREATE_PIPE_INSTANCE as well and is refused. A server end that somebody else
  // put up may learn who we are, and not act as us.
  const HANDLE handle = ::CreateFileW(address.c_str(), GENERIC_READ | FILE_WRITE_DATA, 0, nullptr, OPEN_EXISTING,
                                      FILE_FLAG_OVERLAPPED | SECURITY_SQOS_PRESENT | SECURITY_IDENTIFICATION, nullptr);
  if (handle == INVALID_HANDLE_VALUE) {
    return LastError();
  }
  std::error_code error;
  stream.assign(handle, error);
  if (error) {
    ::CloseHandle(handle);
  }
  return error;
}

bool IsBusy(const std::error_code& error) { return error.value() == ERROR_PIPE_BUSY; }

std::uint64_t PeerProcess(Stream& stream) {
  ULONG process = 0;
  return ::GetNamedPipeClientProcessId(stream.native_handle(), &process) != FALSE ? process : 0;
}

std::uint64_t OwnProcess() { return ::GetCurrentProcessId(); }

std::size_t TryWrite(Stream&, std::span<const char>, std::error_code&) { return 0; }

}  // namespace platform::ipc
