// The suite's IPC library, client side: one connection to the hub of a pipe.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "assistant_export.h"
#include "platform/ipc/TagIPCMessageItem.h"

namespace platform::ipc {
class ClientConnection;
}

// A client owns one thread, which connects, reads and runs the callbacks: in order of arrival, never two at once, and
// never on another thread. It keeps trying to reach the hub (waiting 20 ms at first, up to 1 s) and says hello again
// after a broken connection. All operations may be called from any thread, callbacks included.
class ASSISTANT_EXPORT IPCMessageClient {
 public:
  using Callback = std::function<void(TagIPCMessageItem&)>;

  // The id to ask for where any will do.
  static constexpr int kAnyClientId = -1;

  // `clientId`: the id to ask for. `pipeName`: for example \\.\Pipe\iLumoraAssistant. Returns at once, connected or
  // not. `hubMustExist`: throw std::system_error when the hub cannot be reached now, instead of waiting for it.
  // `reserved` is ignored.
  IPCMessageClient(int clientId, bool hubMustExist, bool reserved, const std::wstring& pipeName);

  // As StopDelivery. Destroying a client from inside one of its own callbacks is not allowed.
  virtual ~IPCMessageClient();

  IPCMessageClient(const IPCMessageClient&) = delete;
  IPCMessageClient& operator=(const IPCMessageClient&) = delete;

  // Calls `(object->*member)(item)` for each message with that code; a second registration replaces the first. Throws
  // std::system_error when the registration mutex cannot be locked.
  template <class Object>
  void RegisterMessageCallback(int code, Object* object, void (Object::*member)(TagIPCMessageItem&)) {
    RegisterMessageCallback(code, [object, member](TagIPCMessageItem& item) { (object->*member)(item); });
  }
  void RegisterMessageCallback(int code, Callback callback);

  // Removes every callback. Returns true when none is running any more; called from inside a callback it does not wait
  // for that one.
  bool UnRegisterMessageCallbackAll();

  // Sends fields 1, 2, 4, 5, 8 and 9 of the item; the rest is the library's to set. The payload is copied before it
  // returns. False when there is no connection, when too much waits to be sent (1 MiB), and when the payload cannot be
  // sent (negative length, or more than fits a frame): the receiver is then sent IpcStatus::UnsendableAnswer instead,
  // so that nobody waits in vain.
  bool PostIPCMessage(const TagIPCMessageItem& item) const;

  // Waits until the hub has granted an id; false after `timeout`. Not from inside a callback.
  bool WaitUntilConnected(std::chrono::milliseconds timeout) const;

  // Called with true when the hub has granted an id and with false when that connection ended, on the client's thread
  // like the callbacks; at once from this call if already connected is not promised, so set it before relying on it.
  void SetConnectionObserver(std::function<void(bool connected)> observer);

  // Lets a running callback finish and sends what it posted, then closes the connection and ends the client's thread.
  // No callback runs afterwards and PostIPCMessage returns false. A second call does nothing. A process must call this
  // on clients with static storage before main returns: at exit Windows kills the thread wherever it is.
  void StopDelivery();

 private:
  std::unique_ptr<platform::ipc::ClientConnection> connection_;
};
