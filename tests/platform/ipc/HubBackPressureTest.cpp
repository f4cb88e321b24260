// A flood of requests must not cost the service its connection, nor other clients their answers.
#include <algorithm>
#include <atomic>
#include <future>
#include <thread>

#include "tests/platform/ipc/IpcTest.h"

namespace {

using std::chrono::milliseconds;

constexpr int kServiceId = 0xc40000;

class HubBackPressure : public IpcTest {
 protected:
  HubBackPressure() {
    StartHub();
    service_ = std::make_unique<IPCMessageClient>(kServiceId, false, false, pipeName_);
    service_->SetConnectionObserver([this](bool connected) { ended_ += connected ? 0 : 1; });
    service_->RegisterMessageCallback(8, [this](TagIPCMessageItem& item) { Answer(item); });
    EXPECT_TRUE(service_->WaitUntilConnected(kPatience));
  }
  ~HubBackPressure() override {
    release_.set_value();
    service_->StopDelivery();
  }

  void Answer(const TagIPCMessageItem& item) {
    if (item.length == 1) {
      released_.wait();
      return;
    }
    TagIPCMessageItem answer;
    answer.receiver = item.sender;
    answer.code = item.replyCode;
    EXPECT_TRUE(service_->PostIPCMessage(answer));
  }

  // Holds the service up inside a callback until Release.
  void Hold(RawPeer& peer) { peer.Send({.receiver = kServiceId, .code = 8, .payload = "h"}); }
  void Release() {
    release_.set_value();
    release_ = {};
  }

  // A frame that the service only drops.
  static std::string Ballast() {
    return TestFrame{.receiver = kServiceId, .code = 9, .payload = std::string(60'000, 'x')}.Bytes();
  }

  std::promise<void> release_;
  std::shared_future<void> released_{release_.get_future()};
  std::atomic<int> ended_ = 0;
  std::unique_ptr<IPCMessageClient> service_;
};

TEST_F(HubBackPressure, AFloodWaitsForTheServiceAndNothingOfItIsLost) {
  RawPeer flooder(pipeName_);
  ASSERT_NE(flooder.SayHello(), -1);
  Hold(flooder);
  std::size_t written = 0;
  std::string flood;
  for (int i = 0; i < 100; ++i) {
    flood += Ballast();
  }
  written = flooder.Write(flood, milliseconds(300));
  EXPECT_LT(written, 2'500'000U);  // it is held up: the queue, and what the system keeps on the way
  RawPeer client(pipeName_);
  const std::int32_t id = client.SayHello();
  client.Send({.receiver = kServiceId, .code = 8, .replyCode = 42});
  EXPECT_FALSE(client.Receive(milliseconds(100)));
  Release();
  flooder.Write(flood.substr(written));
  EXPECT_EQ(client.Receive(), (TestFrame{.receiver = id, .sender = kServiceId, .code = 42}));
  flooder.Send({.receiver = kServiceId, .code = 8, .replyCode = 43});
  EXPECT_TRUE(flooder.Receive());
  EXPECT_EQ(ended_, 0);
  EXPECT_EQ(LinesWith(L""), 0);
}

TEST_F(HubBackPressure, AFlooderThatIsHeldUpCanStillBeAnswered) {
  RawPeer flooder(pipeName_);
  ASSERT_EQ(flooder.SayHello(5), 5);
  Hold(flooder);
  for (int i = 0; i < 20; ++i) {
    flooder.Write(Ballast(), milliseconds(50));
  }
  RawPeer other(pipeName_);
  ASSERT_EQ(other.SayHello(6), 6);
  const TestFrame frame{.receiver = 5, .sender = 6, .code = 8};
  other.Send(frame);
  EXPECT_EQ(flooder.Receive(), frame);
}

TEST_F(HubBackPressure, AHeldUpSendersDeathLeavesTheOthersTheirTurn) {
  auto flooder = std::make_unique<RawPeer>(pipeName_);
  ASSERT_NE(flooder->SayHello(), -1);
  Hold(*flooder);
  for (int i = 0; i < 20; ++i) {
    flooder->Write(Ballast(), milliseconds(20));
  }
  RawPeer client(pipeName_);
  ASSERT_NE(client.SayHello(), -1);
  client.Send({.receiver = kServiceId, .code = 8, .replyCode = 42});
  flooder.reset();
  Release();
  EXPECT_TRUE(client.Receive());
}

// Writes `flood` until the hub takes no more of it; what is left.
std::string WriteUntilHeldUp(RawPeer& peer, const std::string& flood) {
  return flood.substr(peer.Write(flood, milliseconds(300)));
}

TEST_F(HubBackPressure, ThoseWhoWaitGetOneFrameInEachInTurn) {
  RawPeer service(pipeName_);
  ASSERT_EQ(service.SayHello(0x10000), 0x10000);
  RawPeer flooder(pipeName_);
  ASSERT_EQ(flooder.SayHello(5), 5);
  std::string flood;
  for (int i = 0; i < 50'000; ++i) {
    flood += TestFrame{.receiver = 0x10000, .code = 9}.Bytes();
  }
  flood = WriteUntilHeldUp(flooder, flood);
  ASSERT_FALSE(flood.empty());
  RawPeer client(pipeName_);
  ASSERT_EQ(client.SayHello(6), 6);
  const std::string frame = TestFrame{.receiver = 0x10000, .code = 8}.Bytes();
  client.Write(frame + frame + frame);
  std::this_thread::sleep_for(milliseconds(100));  // for the hub to read it
  std::vector<std::int32_t> senders;
  while (std::count(senders.begin(), senders.end(), 6) < 3) {
    const auto next = service.Receive();
    ASSERT_TRUE(next);
    senders.push_back(next->sender);
  }
  const auto first = std::find(senders.begin(), senders.end(), 6);
  EXPECT_EQ(std::vector<std::int32_t>(first, senders.end()), (std::vector<std::int32_t>{6, 5, 6, 5, 6}));
}

TEST_F(HubBackPressure, ThoseWhoWaitForAServiceThatGoesAreToldSo) {
  RawPeer service(pipeName_);
  ASSERT_EQ(service.SayHello(0x10000), 0x10000);  // never reads
  RawPeer client(pipeName_);
  ASSERT_EQ(client.SayHello(5), 5);
  std::string flood;
  for (int i = 0; i < 30; ++i) {
    flood += TestFrame{.receiver = 0x10000, .code = 9, .payload = std::string(60'000, 'x')}.Bytes();
  }
  flood = WriteUntilHeldUp(client, flood);
  ASSERT_FALSE(flood.empty());
  service.Close();
  EXPECT_EQ(client.Write(flood), flood.size());
  client.Send({.receiver = 0x10000, .code = 8, .replyCode = 42});
  EXPECT_EQ(client.Receive(), Status(5, 0, 42, 1));
}

TEST_F(HubBackPressure, ManyFloodsLeaveALivingClientItsTurn) {
  std::atomic<bool> stop = false;
  std::vector<std::thread> floods;
  for (int i = 0; i < 4; ++i) {
    floods.emplace_back([&] {
      RawPeer peer(pipeName_);
      peer.SayHello();
      while (!stop) {
        peer.Write(Ballast(), milliseconds(200));
      }
    });
  }
  RawPeer client(pipeName_);
  const std::int32_t id = client.SayHello();
  for (int i = 0; i < 100; ++i) {
    client.Send({.receiver = kServiceId, .code = 8, .replyCode = i});
    ASSERT_EQ(client.Receive(), (TestFrame{.receiver = id, .sender = kServiceId, .code = i}));
  }
  stop = true;
  for (std::thread& flood : floods) {
    flood.join();
  }
  EXPECT_EQ(ended_, 0);
}

TEST_F(HubBackPressure, AllAnswersToABurstOfRequestsArrive) {
  service_->RegisterMessageCallback(10, [&](TagIPCMessageItem& item) {
    std::string text(60'000, 'y');
    TagIPCMessageItem answer;
    answer.receiver = item.sender;
    answer.code = item.replyCode;
    answer.payload = text.data();
    answer.length = static_cast<int>(text.size());
    EXPECT_TRUE(service_->PostIPCMessage(answer));
  });
  RawPeer client(pipeName_);
  ASSERT_NE(client.SayHello(), -1);
  for (int burst = 0; burst < 20; ++burst) {
    std::string requests;
    for (int i = 0; i < 15; ++i) {
      requests += TestFrame{.receiver = kServiceId, .code = 10, .replyCode = i}.Bytes();
    }
    client.Write(requests);
    for (int i = 0; i < 15; ++i) {
      const auto answer = client.Receive();
      ASSERT_TRUE(answer);
      ASSERT_EQ(answer->code, i);
    }
  }
}

}  // namespace
