// The hub's own request, and what the hub counts.
#include <stdexcept>

#include "tests/platform/ipc/IpcTest.h"

namespace {

constexpr std::int32_t kStatusRequest = 2;

class HubStatus : public IpcTest {
 protected:
  void StartHubWith(std::function<std::string()> provider, const HubLimits& limits = {}) {
    hub_ = std::make_unique<IPCMessageHub>(pipeName_, limits);
    hub_->SetStatusProvider(std::move(provider));
    ASSERT_TRUE(hub_->Claim());
    hub_->Start();
  }

  // What a request for the status, from a new client with the id 5, is answered with.
  std::optional<TestFrame> Ask() {
    RawPeer peer(pipeName_);
    EXPECT_EQ(peer.SayHello(5), 5);
    peer.Send({.code = kStatusRequest, .replyCode = 42});
    return peer.Receive();
  }
};

TEST_F(HubStatus, IsWhatTheProviderSays) {
  StartHubWith([] { return std::string("{\"any\":\"text\"}"); });
  EXPECT_EQ(Ask(), (TestFrame{.receiver = 5, .sender = 0, .code = 42, .payload = "{\"any\":\"text\"}"}));
}

TEST_F(HubStatus, IsAskedForAnewEachTime) {
  int calls = 0;
  StartHubWith([&calls] { return std::to_string(++calls); });
  RawPeer peer(pipeName_);
  peer.SayHello(5);
  for (const char* expected : {"1", "2"}) {
    peer.Send({.code = kStatusRequest, .replyCode = 42});
    EXPECT_EQ(peer.Receive().value_or(TestFrame()).payload, expected);
  }
}

TEST_F(HubStatus, WithoutAProviderIsARequestThatTheHubDoesNotKnow) {
  StartHub();
  EXPECT_EQ(Ask(), Status(5, 0, 42, 2));
}

TEST_F(HubStatus, OfOtherCodesStaysUnknown) {
  StartHubWith([] { return std::string("document"); });
  RawPeer peer(pipeName_);
  peer.SayHello(5);
  peer.Send({.code = 3, .replyCode = 42});
  EXPECT_EQ(peer.Receive(), Status(5, 0, 42, 2));
}

TEST_F(HubStatus, IsNotSentToWhoeverWantsNoAnswer) {
  int calls = 0;
  StartHubWith([&calls] { return std::to_string(++calls); });
  RawPeer peer(pipeName_);
  peer.SayHello(5);
  peer.Send({.code = kStatusRequest, .replyCode = -1});
  peer.Send({.code = kStatusRequest, .replyCode = 42, .status = 2});  // a status is never answered
  peer.Send({.code = kStatusRequest, .replyCode = 42});
  EXPECT_EQ(peer.Receive(), (TestFrame{.receiver = 5, .sender = 0, .code = 42, .payload = "1"}));
}

TEST_F(HubStatus, IsNotForWhoeverHasNotSaidHello) {
  StartHubWith([] { return std::string("document"); });
  RawPeer peer(pipeName_);
  peer.Send({.code = kStatusRequest, .replyCode = 42});
  EXPECT_FALSE(peer.Receive());
}

TEST_F(HubStatus, IsRefusedWhenTheProviderFails) {
  StartHubWith([]() -> std::string { throw std::runtime_error("out of order"); });
  EXPECT_EQ(Ask(), Status(5, 0, 42, 3));
  EXPECT_EQ(LinesWith(L"No status document: out of order(IPCMessageHub::AnswerStatus)"), 1);
}

TEST_F(HubStatus, MayFillAFrameAndNotMore) {
  std::size_t size = 65'505;  // 65,536 less the 31 bytes of the fields between length and payload
  StartHubWith([&size] { return std::string(size, 'x'); });
  EXPECT_EQ(Ask().value_or(TestFrame()).payload.size(), size);
  ++size;
  EXPECT_TRUE(Eventually([&] { return hub_->Counters().connections == 0; }));
  EXPECT_EQ(Ask(), Status(5, 0, 42, 3));
}

TEST_F(HubStatus, CountsConnectionsNowAndAtMost) {
  StartHub();
  EXPECT_EQ(hub_->Counters().connections, 0U);
  auto one = std::make_unique<RawPeer>(pipeName_);
  one->SayHello();
  RawPeer two(pipeName_);
  two.SayHello();
  EXPECT_EQ(hub_->Counters().connections, 2U);
  one.reset();
  EXPECT_TRUE(Eventually([&] { return hub_->Counters().connections == 1; }));
  EXPECT_EQ(hub_->Counters().mostConnections, 2U);
  hub_->Stop();
  EXPECT_EQ(hub_->Counters().connections, 0U);
  EXPECT_EQ(hub_->Counters().mostConnections, 2U);
}

TEST_F(HubStatus, CountsEachRefusal) {
  StartHub({.connections = 2});
  RawPeer one(pipeName_);
  ASSERT_EQ(one.SayHello(5), 5);
  RawPeer same(pipeName_);
  EXPECT_EQ(same.SayHello(5), -1);
  RawPeer third(pipeName_);
  RawPeer fourth(pipeName_);
  EXPECT_TRUE(Eventually([&] { return hub_->Counters().refused >= 2; }));
  EXPECT_EQ(hub_->Counters().cutOff, 0U);
}

TEST_F(HubStatus, CountsEachConnectionThatIsCutOff) {
  StartHub();
  RawPeer peer(pipeName_);
  peer.SayHello();
  peer.Write(std::string(4, '\xff'));
  EXPECT_TRUE(peer.IsClosed());
  EXPECT_EQ(hub_->Counters().cutOff, 1U);
  EXPECT_EQ(hub_->Counters().refused, 0U);
}

TEST_F(HubStatus, CountsFramesThatReachAClientAndNoOthers) {
  StartHubWith([] { return std::string("document"); });
  RawPeer one(pipeName_);
  RawPeer two(pipeName_);
  one.SayHello(1);
  two.SayHello(2);
  for (int i = 0; i < 3; ++i) {
    one.Send({.receiver = 2, .code = 8});
    ASSERT_TRUE(two.Receive());
  }
  one.Send({.receiver = 9, .code = 8, .replyCode = 42});  // to nobody
  ASSERT_TRUE(one.Receive());
  one.Send({.code = kStatusRequest, .replyCode = 42});
  ASSERT_TRUE(one.Receive());
  EXPECT_EQ(hub_->Counters().framesRouted, 3U);
}

}  // namespace
