// A hub on a pipe of the test's own and, behind it, a service that answers as the test says.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "client/RegistryClient.h"
#include "platform/ipc/IPCMessageHub.h"
#include "tests/platform/ipc/IpcTestSystem.h"

namespace support {

class ClientFixture : public ::testing::Test {
 protected:
  using Answer = std::function<void(IPCMessageClient& service, const TagIPCMessageItem& request)>;

  struct Received {
    int code;
    std::string payload;
  };

  ~ClientFixture() override;

  // With `status` as the hub's provider where it is not empty.
  void StartHub(std::function<std::string()> status = {});
  void StopHub();

  // A client with the service's id that calls `answer` for requests of `code`.
  void StartService(int code, Answer answer);

  // An answer that carries `payload`.
  static Answer With(std::string payload);
  static void Reply(IPCMessageClient& service, const TagIPCMessageItem& request, std::string payload);

  KT::RegistryClientOptions Options(std::chrono::milliseconds timeout = std::chrono::seconds(10)) const;

  std::vector<Received> Requests();

  PrivatePipes pipes;
  const std::wstring pipeName = pipes.NewName();
  std::unique_ptr<IPCMessageHub> hub;
  std::unique_ptr<IPCMessageClient> service;

 private:
  std::mutex mutex_;
  std::vector<Received> requests_;
};

}  // namespace support
