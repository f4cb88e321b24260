// How a client finds its hub, loses it and finds it again.
#include <atomic>
#include <future>
#include <system_error>
#include <thread>

#include "platform/ipc/Limits.h"
#include "tests/platform/ipc/IpcTest.h"

namespace {

using std::chrono::milliseconds;

using ClientConnecting = IpcTest;

bool Post(const IPCMessageClient& client) {
  TagIPCMessageItem item;
  item.receiver = 6;
  item.code = 8;
  return client.PostIPCMessage(item);
}

TEST_F(ClientConnecting, DoesNotWaitForAHubThatIsNotThere) {
  const auto start = std::chrono::steady_clock::now();
  IPCMessageClient client(5, false, false, pipeName_);
  EXPECT_FALSE(Post(client));
  EXPECT_LT(std::chrono::steady_clock::now() - start, milliseconds(1'000));
  EXPECT_FALSE(client.WaitUntilConnected(milliseconds(30)));
}

TEST_F(ClientConnecting, FindsAHubThatStartsLater) {
  IPCMessageClient client(5, false, false, pipeName_);
  EXPECT_FALSE(client.WaitUntilConnected(milliseconds(60)));
  StartHub();
  EXPECT_TRUE(client.WaitUntilConnected(kPatience));
  EXPECT_TRUE(Post(client));
}

TEST_F(ClientConnecting, FindsTheNextHubWhenItsOwnHasGone) {
  StartHub();
  std::atomic<int> begun = 0;
  std::atomic<int> ended = 0;
  IPCMessageClient client(5, false, false, pipeName_);
  client.SetConnectionObserver([&](bool connected) { ++(connected ? begun : ended); });
  ASSERT_TRUE(client.WaitUntilConnected(kPatience));
  hub_.reset();
  EXPECT_TRUE(Eventually([&] { return ended == 1; }));
  EXPECT_FALSE(Post(client));
  StartHub();
  EXPECT_TRUE(client.WaitUntilConnected(kPatience));
  RawPeer peer(pipeName_);
  ASSERT_EQ(peer.SayHello(6), 6);
  EXPECT_TRUE(Post(client));
  EXPECT_EQ(peer.Receive(), (TestFrame{.receiver = 6, .sender = 5, .code = 8}));
  client.StopDelivery();
  EXPECT_GE(begun, 1);
  EXPECT_EQ(ended, 2);
}

TEST_F(ClientConnecting, KeepsItsCallbacksOverANewConnection) {
  StartHub();
  std::promise<void> called;
  IPCMessageClient client(5, false, false, pipeName_);
  client.RegisterMessageCallback(8, [&](TagIPCMessageItem&) { called.set_value(); });
  ASSERT_TRUE(client.WaitUntilConnected(kPatience));
  hub_.reset();
  StartHub();
  RawPeer peer(pipeName_);
  ASSERT_EQ(peer.SayHello(6), 6);
  ASSERT_TRUE(Eventually([&] {
    peer.Send({.receiver = 5, .code = 9, .replyCode = 42});
    return peer.Receive() == Status(6, 5, 42, 2);
  }));
  peer.Send({.receiver = 5, .code = 8});
  EXPECT_EQ(called.get_future().wait_for(kPatience), std::future_status::ready);
}

TEST_F(ClientConnecting, KeepsTryingForAnIdThatIsTaken) {
  StartHub();
  auto owner = std::make_unique<RawPeer>(pipeName_);
  ASSERT_EQ(owner->SayHello(5), 5);
  IPCMessageClient client(5, false, false, pipeName_);
  EXPECT_FALSE(client.WaitUntilConnected(milliseconds(150)));
  EXPECT_EQ(LinesWith(L"The IPC hub refused this client with status 4(IPCMessageClient::SayHello)"), 1);
  owner.reset();
  EXPECT_TRUE(client.WaitUntilConnected(kPatience));
}

TEST_F(ClientConnecting, ThrowsWithoutAHubThatMustExist) {
  try {
    IPCMessageClient client(5, true, false, pipeName_);
    FAIL() << "no exception";
  } catch (const std::system_error& error) {
    EXPECT_NE(std::string(error.what()).find("MarnockTest"), std::string::npos) << error.what();
  }
}

TEST_F(ClientConnecting, FindsAHubThatMustExist) {
  StartHub();
  IPCMessageClient client(5, true, true, pipeName_);
  EXPECT_TRUE(client.WaitUntilConnected(kPatience));
}

TEST_F(ClientConnecting, AnExceptionFromTheObserverIsLoggedAndCostsNothingElse) {
  IPCMessageClient client(5, false, false, pipeName_);
  client.SetConnectionObserver([](bool) { throw std::runtime_error("it broke"); });
  StartHub();
  EXPECT_TRUE(client.WaitUntilConnected(kPatience));
  EXPECT_TRUE(Eventually([&] {
    return LinesWith(L"Exception from the IPC connection observer: it broke(IPCMessageClient::Observe)") == 1;
  }));
  EXPECT_TRUE(Post(client));
}

TEST_F(ClientConnecting, CanBeStoppedWhileItLooksForAHub) {
  IPCMessageClient client(5, false, false, pipeName_);
  client.StopDelivery();
  EXPECT_FALSE(client.WaitUntilConnected(kPatience));  // at once
}

TEST_F(ClientConnecting, CanComeAndGoManyTimes) {
  StartHub();
  for (int i = 0; i < 100; ++i) {
    IPCMessageClient client(-1, false, false, pipeName_);
    if (i % 2 == 0) {
      ASSERT_TRUE(client.WaitUntilConnected(kPatience));
    }
  }
}

}  // namespace
