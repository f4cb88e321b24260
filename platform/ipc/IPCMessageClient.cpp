#include "platform/ipc/IPCMessageClient.h"

#include <utility>

#include "platform/ipc/ClientConnection.h"

using platform::ipc::ClientConnection;

IPCMessageClient::IPCMessageClient(int clientId, bool hubMustExist, bool /*reserved*/, const std::wstring& pipeName)
    : connection_(std::make_unique<ClientConnection>(clientId, hubMustExist, pipeName)) {}

IPCMessageClient::~IPCMessageClient() = default;

void IPCMessageClient::RegisterMessageCallback(int code, Callback callback) {
  connection_->Callbacks().Set(code, std::move(callback));
}

bool IPCMessageClient::UnRegisterMessageCallbackAll() {
  connection_->Callbacks().Clear();
  return true;
}

bool IPCMessageClient::PostIPCMessage(const TagIPCMessageItem& item) const { return connection_->Post(item); }

bool IPCMessageClient::WaitUntilConnected(std::chrono::milliseconds timeout) const {
  return connection_->WaitUntilConnected(timeout);
}

void IPCMessageClient::SetConnectionObserver(std::function<void(bool connected)> observer) {
  connection_->SetObserver(std::move(observer));
}

void IPCMessageClient::StopDelivery() { connection_->Stop(); }
