#include "tests/service/RecordingIpcClient.h"

#include <map>

namespace platform::ipc {
class ClientConnection {};
}  // namespace platform::ipc

namespace support {

namespace {
IpcRecord g_record;
std::map<int, IPCMessageClient::Callback> g_callbacks;
}  // namespace

IpcRecord& IpcRecord::Reset() {
  g_record = IpcRecord();
  g_callbacks.clear();
  return g_record;
}

IpcRecord& IpcRecord::Get() { return g_record; }

bool Deliver(TagIPCMessageItem& item) {
  const auto callback = g_callbacks.find(item.code);
  if (callback == g_callbacks.end()) {
    return false;
  }
  callback->second(item);
  return true;
}

}  // namespace support

using support::g_record;

IPCMessageClient::IPCMessageClient(int clientId, bool hubMustExist, bool reserved, const std::wstring& pipeName) {
  g_record.clientId = clientId;
  g_record.hubMustExist = hubMustExist;
  g_record.reserved = reserved;
  g_record.pipeName = pipeName;
}

IPCMessageClient::~IPCMessageClient() = default;

void IPCMessageClient::RegisterMessageCallback(int code, Callback callback) {
  g_record.registeredCodes.push_back(code);
  support::g_callbacks[code] = std::move(callback);
}

bool IPCMessageClient::UnRegisterMessageCallbackAll() {
  ++g_record.unregistrations;
  if (g_record.onUnregister) {
    g_record.onUnregister();
  }
  support::g_callbacks.clear();
  return true;
}

bool IPCMessageClient::PostIPCMessage(const TagIPCMessageItem& item) const {
  support::PostedItem posted{item, {}};
  if (item.length > 0) {
    posted.payload.assign(item.payload, static_cast<std::size_t>(item.length));
  }
  g_record.posted.push_back(std::move(posted));
  return g_record.postSucceeds;
}

bool IPCMessageClient::WaitUntilConnected(std::chrono::milliseconds) const { return true; }
void IPCMessageClient::SetConnectionObserver(std::function<void(bool)>) {}
void IPCMessageClient::StopDelivery() {}
