// Claiming a pipe, starting and stopping in order.
#include <atomic>
#include <future>
#include <memory>
#include <thread>
#include <vector>

#include "tests/platform/ipc/IpcTest.h"

namespace {

using std::chrono::milliseconds;

constexpr int kServiceId = 0xc40000;

using HubLifecycle = IpcTest;

TEST_F(HubLifecycle, ASecondClaimIsRefused) {
  IPCMessageHub first(pipeName_);
  EXPECT_TRUE(first.Claim());
  IPCMessageHub second(pipeName_);
  EXPECT_FALSE(second.Claim());
}

TEST_F(HubLifecycle, ASecondClaimIsRefusedWhileTheFirstHubServes) {
  StartHub();
  IPCMessageHub second(pipeName_);
  EXPECT_FALSE(second.Claim());
  EXPECT_NE(RawPeer(pipeName_).SayHello(), -1);
}

TEST_F(HubLifecycle, AClaimEndsWithItsHub) {
  StartHub();
  hub_->Stop();
  IPCMessageHub second(pipeName_);
  EXPECT_FALSE(second.Claim());
  hub_.reset();
  EXPECT_TRUE(second.Claim());
}

TEST_F(HubLifecycle, HubsOfDifferentPipesDoNotMeet) {
  StartHub();
  const std::wstring otherName = pipes_.NewName();
  IPCMessageHub other(otherName);
  ASSERT_TRUE(other.Claim());
  other.Start();
  RawPeer here(pipeName_);
  RawPeer there(otherName);
  EXPECT_EQ(here.SayHello(5), 5);
  EXPECT_EQ(there.SayHello(5), 5);
}

TEST_F(HubLifecycle, AClaimedHubThatWasNeverStartedCanBeStopped) {
  IPCMessageHub hub(pipeName_);
  ASSERT_TRUE(hub.Claim());
  hub.StopAccepting();
  hub.Stop();
}

TEST_F(HubLifecycle, StoppingTwiceIsStoppingOnce) {
  StartHub();
  hub_->StopAccepting();
  hub_->StopAccepting();
  hub_->Stop();
  hub_->Stop();
}

TEST_F(HubLifecycle, StopEndsEveryConnection) {
  StartHub();
  RawPeer peer(pipeName_);
  ASSERT_NE(peer.SayHello(), -1);
  hub_->Stop();
  EXPECT_TRUE(peer.IsClosed());
}

TEST_F(HubLifecycle, ServesOnAfterManyConnectionsAtOneTime) {
  StartHub();
  for (int round = 0; round < 2; ++round) {
    std::vector<std::unique_ptr<RawPeer>> peers;
    for (int i = 0; i < 20; ++i) {
      peers.push_back(std::make_unique<RawPeer>(pipeName_));
      ASSERT_NE(peers.back()->SayHello(), -1);
    }
    peers.clear();
    ASSERT_TRUE(Eventually([this] { return hub_->Counters().connections == 0; }));
  }
  EXPECT_NE(RawPeer(pipeName_).SayHello(), -1);
}

TEST_F(HubLifecycle, StopSendsWhatWaitsForAClient) {
  StartHub();
  RawPeer late(pipeName_);
  RawPeer sender(pipeName_);
  ASSERT_EQ(late.SayHello(5), 5);
  ASSERT_EQ(sender.SayHello(6), 6);
  for (int i = 0; i < 12; ++i) {  // more than the system takes by itself
    sender.Send({.receiver = 5, .code = i, .payload = std::string(60'000, 'x')});
  }
  sender.Send({.receiver = 6, .code = 8});
  ASSERT_TRUE(sender.Receive());  // so the hub has them all
  std::thread stop([&] { hub_->Stop(); });
  for (int i = 0; i < 12; ++i) {
    const auto frame = late.Receive();
    EXPECT_TRUE(frame && frame->code == i);
  }
  stop.join();
}

TEST_F(HubLifecycle, StopDoesNotWaitLongForAPeerThatReadsNothing) {
  StartHub();
  RawPeer deaf(pipeName_);
  RawPeer sender(pipeName_);
  ASSERT_EQ(deaf.SayHello(5), 5);
  ASSERT_EQ(sender.SayHello(6), 6);
  for (int i = 0; i < 12; ++i) {
    sender.Send({.receiver = 5, .code = i, .payload = std::string(60'000, 'x')});
  }
  sender.Send({.receiver = 6, .code = 8});
  ASSERT_TRUE(sender.Receive());
  const auto start = std::chrono::steady_clock::now();
  hub_->Stop();
  const auto took = std::chrono::steady_clock::now() - start;
  EXPECT_GE(took, milliseconds(490));
  EXPECT_LT(took, milliseconds(3'000));
}

TEST_F(HubLifecycle, StopAcceptingLetsNoNewConnectionIn) {
  StartHub();
  hub_->StopAccepting();
  IPCMessageClient client(-1, false, false, pipeName_);
  EXPECT_FALSE(client.WaitUntilConnected(milliseconds(100)));
}

TEST_F(HubLifecycle, StopAcceptingReadsNothingMoreFromOtherProcesses) {
  StartHub();
  IPCMessageClient service(kServiceId, false, false, pipeName_);
  std::atomic<int> served = 0;
  service.RegisterMessageCallback(8, [&](TagIPCMessageItem&) { ++served; });
  ASSERT_TRUE(service.WaitUntilConnected(kPatience));
  std::thread foreign([&] { StatusForForeignHello(pipeName_, -1, kServiceId); });
  EXPECT_TRUE(Eventually([&] { return served > 20; }));
  hub_->StopAccepting();
  std::this_thread::sleep_for(milliseconds(50));  // for what was read before
  const int before = served;
  std::this_thread::sleep_for(milliseconds(50));
  EXPECT_EQ(served, before);
  service.StopDelivery();
  hub_->Stop();
  foreign.join();
}

TEST_F(HubLifecycle, AnOrderlyStopAnswersTheRequestThatIsBeingServed) {
  StartHub();
  IPCMessageClient service(kServiceId, false, false, pipeName_);
  std::promise<void> begun;
  std::promise<void> release;
  service.RegisterMessageCallback(8, [&](TagIPCMessageItem& item) {
    begun.set_value();
    release.get_future().wait();
    TagIPCMessageItem answer;
    answer.receiver = item.sender;
    answer.code = item.replyCode;
    EXPECT_TRUE(service.PostIPCMessage(answer));
  });
  ASSERT_TRUE(service.WaitUntilConnected(kPatience));
  RawPeer client(pipeName_);
  const std::int32_t id = client.SayHello();
  client.Send({.receiver = kServiceId, .code = 8, .replyCode = 42});
  begun.get_future().wait();
  hub_->StopAccepting();
  std::thread later([&] {
    std::this_thread::sleep_for(milliseconds(50));
    release.set_value();
  });
  service.StopDelivery();
  hub_->Stop();
  later.join();
  EXPECT_EQ(client.Receive(), (TestFrame{.receiver = id, .sender = kServiceId, .code = 42}));
  EXPECT_TRUE(client.IsClosed());
}

TEST_F(HubLifecycle, AnOrderlyStopWithManyRequestsOnTheWayEndsInTime) {
  StartHub();
  IPCMessageClient service(kServiceId, false, false, pipeName_);
  std::atomic<int> served = 0;
  service.RegisterMessageCallback(8, [&](TagIPCMessageItem& item) {
    ++served;
    TagIPCMessageItem answer;
    answer.receiver = item.sender;
    answer.code = item.replyCode;
    service.PostIPCMessage(answer);
  });
  ASSERT_TRUE(service.WaitUntilConnected(kPatience));
  std::atomic<bool> stop = false;
  std::thread client([&] {
    RawPeer peer(pipeName_);
    peer.SayHello();
    const std::string request = TestFrame{.receiver = kServiceId, .code = 8, .replyCode = 42}.Bytes();
    while (!stop && peer.Write(request, milliseconds(100)) > 0) {
      peer.Receive(milliseconds(100));
    }
  });
  ASSERT_TRUE(Eventually([&] { return served > 100; }));
  const auto start = std::chrono::steady_clock::now();
  hub_->StopAccepting();
  service.StopDelivery();
  hub_->Stop();
  EXPECT_LT(std::chrono::steady_clock::now() - start, milliseconds(2'000));
  const int atStop = served;
  stop = true;
  client.join();
  EXPECT_EQ(served, atStop);
}

}  // namespace
