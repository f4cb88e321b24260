#include <atomic>
#include <future>

#include "tests/platform/ipc/IpcTest.h"

namespace {

constexpr int kServiceId = 0xc40000;

using RoundTrip = IpcTest;

TEST_F(RoundTrip, AnAnswerReachesTheClientThatAsked) {
  StartHub();
  IPCMessageClient service(kServiceId, false, false, pipeName_);
  service.RegisterMessageCallback(7, [&](TagIPCMessageItem& item) {
    std::string text(item.payload, static_cast<std::size_t>(item.length));
    text += "!";
    TagIPCMessageItem answer;
    answer.receiver = item.sender;
    answer.code = item.replyCode;
    answer.payload = text.data();
    answer.length = static_cast<int>(text.size());
    EXPECT_TRUE(service.PostIPCMessage(answer));
  });
  IPCMessageClient client(IPCMessageClient::kAnyClientId, false, false, pipeName_);
  std::promise<std::string> answered;
  client.RegisterMessageCallback(42, [&](TagIPCMessageItem& item) {
    EXPECT_EQ(item.sender, kServiceId);
    EXPECT_EQ(item.replyCode, -1);
    answered.set_value(std::string(item.payload, static_cast<std::size_t>(item.length)));
  });
  ASSERT_TRUE(service.WaitUntilConnected(kPatience));
  ASSERT_TRUE(client.WaitUntilConnected(kPatience));
  std::string text = "hello";
  TagIPCMessageItem request;
  request.receiver = kServiceId;
  request.code = 7;
  request.replyCode = 42;
  request.payload = text.data();
  request.length = static_cast<int>(text.size());
  EXPECT_TRUE(client.PostIPCMessage(request));
  auto future = answered.get_future();
  ASSERT_EQ(future.wait_for(kPatience), std::future_status::ready);
  EXPECT_EQ(future.get(), "hello!");
  client.StopDelivery();
  service.StopDelivery();
}

}  // namespace
