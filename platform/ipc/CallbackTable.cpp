#include "platform/ipc/CallbackTable.h"

#include <exception>

#include "platform/ipc/LogTexts.h"
#include "platform/logging/LogLine.h"

namespace platform::ipc {

namespace {

constexpr const char* kRun = "IPCMessageClient::RunCallback";

void CallAndLogException(const CallbackTable::Callback& callback, TagIPCMessageItem& item) {
  const int code = item.code;  // the callback may change the item
  try {
    callback(item);
  } catch (const std::exception& error) {
    LogFailure(kRun, kCallbackThrew, code, ": ", error.what());
  } catch (...) {
    LogFailure(kRun, kCallbackThrew, code);
  }
}

}  // namespace

void CallbackTable::Set(int code, Callback callback) {
  auto shared = std::make_shared<const Callback>(std::move(callback));
  const std::lock_guard lock(mutex_);
  callbacks_[code].swap(shared);  // the replaced one is destroyed after the unlocking
}

void CallbackTable::Clear() {
  decltype(callbacks_) removed;
  std::unique_lock lock(mutex_);
  removed.swap(callbacks_);
  ended_.wait(lock, [this] { return runner_ == std::thread::id() || runner_ == std::this_thread::get_id(); });
  lock.unlock();
}

bool CallbackTable::Run(TagIPCMessageItem& item) {
  const auto callback = Begin(item.code);
  if (callback == nullptr) {
    return false;
  }
  CallAndLogException(*callback, item);
  End();
  return true;
}

std::shared_ptr<const CallbackTable::Callback> CallbackTable::Begin(int code) {
  const std::lock_guard lock(mutex_);
  const auto found = callbacks_.find(code);
  if (found == callbacks_.end()) {
    return nullptr;
  }
  runner_ = std::this_thread::get_id();
  return found->second;
}

void CallbackTable::End() {
  const std::lock_guard lock(mutex_);
  runner_ = {};
  ended_.notify_all();
}

}  // namespace platform::ipc
