// The callbacks of a client, by message code.
#pragma once

#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <thread>

#include "platform/ipc/IPCMessageClient.h"

namespace platform::ipc {

// One thread, the client's, runs callbacks; the other operations may come from any thread, callbacks included.
class CallbackTable {
 public:
  using Callback = IPCMessageClient::Callback;

  // Adds a callback, or replaces the one with that code. Throws std::system_error when the mutex cannot be locked.
  void Set(int code, Callback callback);

  // Removes all of them and waits until none is running; does not wait for the callback that it is called from.
  void Clear();

  // Runs the callback for the item's code; false when there is none. What it throws is logged and goes no further.
  bool Run(TagIPCMessageItem& item);

 private:
  std::shared_ptr<const Callback> Begin(int code);
  void End();

  std::mutex mutex_;
  std::condition_variable ended_;
  std::map<int, std::shared_ptr<const Callback>> callbacks_;
  std::thread::id runner_;  // the thread inside a callback, or none
};

}  // namespace platform::ipc
