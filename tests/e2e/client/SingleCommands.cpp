#include <chrono>
#include <condition_variable>
#include <iostream>
#include <limits>
#include <mutex>
#include <string>

#include "codec/Protocol.h"
#include "platform/ipc/IPCMessageClient.h"
#include "tests/e2e/client/Commands.h"

namespace e2e {

namespace {

constexpr std::chrono::seconds kPatience{20};
constexpr int kReplyCode = 1;
// The service has no callback for this code, which it answers with a status. Answers come in the order of the requests:
// whatever has not been answered before that one is not going to be.
constexpr int kUnknownCode = 0xc4ffff;
constexpr int kEndReplyCode = 2;

std::string FromHex(const std::string& hex) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
    bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
  }
  return bytes;
}

std::string ToHex(const char* bytes, int count) {
  std::string hex;
  for (int i = 0; i < count; ++i) {
    hex += "0123456789abcdef"[static_cast<unsigned char>(bytes[i]) >> 4];
    hex += "0123456789abcdef"[static_cast<unsigned char>(bytes[i]) & 15];
  }
  return hex;
}

bool Post(const IPCMessageClient& client, int code, int replyCode, std::string& payload) {
  TagIPCMessageItem request;
  request.receiver = KT::kServiceClientId;
  request.code = code;
  request.replyCode = replyCode;
  request.payload = payload.data();
  request.length = static_cast<int>(payload.size());
  return client.PostIPCMessage(request);
}

}  // namespace

int Idle() {
  IPCMessageClient client(IPCMessageClient::kAnyClientId, false, false, KT::kPipeName);
  if (!client.WaitUntilConnected(kPatience)) {
    return 1;
  }
  std::cout << "idle" << std::endl;
  std::cin.ignore(std::numeric_limits<std::streamsize>::max());
  return 0;
}

int Send(int code, const char* payloadHex) {
  std::mutex mutex;
  std::condition_variable changed;
  std::string answer = "no answer";
  bool over = false;
  IPCMessageClient client(IPCMessageClient::kAnyClientId, false, false, KT::kPipeName);
  client.RegisterMessageCallback(kReplyCode, [&](TagIPCMessageItem& item) {
    const std::lock_guard lock(mutex);
    answer = "status " + std::to_string(item.status) + " " + ToHex(item.payload, item.length);
  });
  client.RegisterMessageCallback(kEndReplyCode, [&](TagIPCMessageItem&) {
    const std::lock_guard lock(mutex);
    over = true;
    changed.notify_all();
  });
  std::string payload = FromHex(payloadHex);
  if (!client.WaitUntilConnected(kPatience) || !Post(client, code, kReplyCode, payload) ||
      !Post(client, kUnknownCode, kEndReplyCode, payload)) {
    std::cout << "not sent\n";
    return 1;
  }
  std::unique_lock lock(mutex);
  if (!changed.wait_for(lock, kPatience, [&] { return over; })) {
    std::cout << "the service is gone\n";
    return 1;
  }
  std::cout << answer << '\n';
  return 0;
}

}  // namespace e2e
