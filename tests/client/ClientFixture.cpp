#include "tests/client/ClientFixture.h"

#include <utility>

namespace support {

ClientFixture::~ClientFixture() {
  service.reset();
  StopHub();
}

void ClientFixture::StartHub(std::function<std::string()> status) {
  hub = std::make_unique<IPCMessageHub>(pipeName);
  hub->SetStatusProvider(std::move(status));
  ASSERT_TRUE(hub->Claim());
  hub->Start();
}

void ClientFixture::StopHub() { hub.reset(); }

void ClientFixture::StartService(int code, Answer answer) {
  if (service == nullptr) {
    service = std::make_unique<IPCMessageClient>(KT::kServiceClientId, false, false, pipeName);
  }
  // The client itself, since the callback may still run while the fixture gives up its pointer.
  service->RegisterMessageCallback(
      code, [this, &client = *service, answer = std::move(answer)](TagIPCMessageItem& item) {
        {
          const std::lock_guard lock(mutex_);
          requests_.push_back({item.code, std::string(item.payload, static_cast<std::size_t>(item.length))});
        }
        answer(client, item);
      });
  ASSERT_TRUE(service->WaitUntilConnected(std::chrono::seconds(10)));
}

ClientFixture::Answer ClientFixture::With(std::string payload) {
  return [payload = std::move(payload)](IPCMessageClient& client, const TagIPCMessageItem& request) {
    Reply(client, request, payload);
  };
}

void ClientFixture::Reply(IPCMessageClient& client, const TagIPCMessageItem& request, std::string payload) {
  TagIPCMessageItem item;
  item.receiver = request.sender;
  item.code = request.replyCode;
  item.length = static_cast<int>(payload.size());
  item.payload = payload.data();
  client.PostIPCMessage(item);
}

KT::RegistryClientOptions ClientFixture::Options(std::chrono::milliseconds timeout) const {
  KT::RegistryClientOptions options;
  options.pipeName = pipeName;
  options.pkgName = "pkg";
  options.timeout = timeout;
  return options;
}

std::vector<ClientFixture::Received> ClientFixture::Requests() {
  const std::lock_guard lock(mutex_);
  return requests_;
}

}  // namespace support
