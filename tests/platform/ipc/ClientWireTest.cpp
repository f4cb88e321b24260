// What a client says to its hub, and what it does about a hub of bad manners.
#include <atomic>
#include <thread>

#include "tests/platform/ipc/IpcTest.h"
#include "tests/platform/ipc/RawHub.h"

namespace {

using std::chrono::milliseconds;

constexpr int kServiceId = 0xc40000;

class ClientWire : public IpcTest {
 protected:
  // A client of the hub that the test plays, greeted as `id`.
  std::unique_ptr<IPCMessageClient> Connect(int id) {
    auto client = std::make_unique<IPCMessageClient>(id, false, false, pipeName_);
    rawHub_.Accept();
    rawHub_.Greet(id);
    EXPECT_TRUE(client->WaitUntilConnected(kPatience));
    return client;
  }

  static bool Post(const IPCMessageClient& client, int code, std::size_t bytes) {
    std::string payload(bytes, 'x');
    TagIPCMessageItem item;
    item.receiver = 6;
    item.code = code;
    item.payload = payload.data();
    item.length = static_cast<int>(bytes);
    return client.PostIPCMessage(item);
  }

  RawHub rawHub_{pipeName_};
};

TEST_F(ClientWire, BeginsWithTheBytesOfAHello) {
  IPCMessageClient client(kServiceId, false, false, pipeName_);
  rawHub_.Accept();
  const std::string expected(
      "\x1f\x00\x00\x00"
      "\x00\x00\x00\x00"
      "\x00\x00\xc4\x00"  // the id wanted
      "\x01\x00\x00\x00"
      "\xff\xff\xff\xff"
      "\xff\xff\xff\xff"
      "\x00\x00\x00\x00"
      "\x01"
      "\x01\x00\x00\x00"  // the protocol version
      "\x00\x00",
      35);
  EXPECT_EQ(rawHub_.Receive().value_or(TestFrame{}).Bytes(), expected);
}

TEST_F(ClientWire, AsksForAnyIdWithMinusOne) {
  IPCMessageClient client(IPCMessageClient::kAnyClientId, false, false, pipeName_);
  rawHub_.Accept();
  EXPECT_EQ(rawHub_.Greet(9), Hello(-1));
  EXPECT_TRUE(client.WaitUntilConnected(kPatience));
}

TEST_F(ClientWire, IsNotConnectedBeforeTheHubHasAnswered) {
  IPCMessageClient client(5, false, false, pipeName_);
  rawHub_.Accept();
  ASSERT_TRUE(rawHub_.Receive());
  EXPECT_FALSE(client.WaitUntilConnected(milliseconds(50)));
  EXPECT_FALSE(Post(client, 8, 1));
}

TEST_F(ClientWire, SaysHelloAgainAfterARefusal) {
  IPCMessageClient client(5, false, false, pipeName_);
  for (int i = 0; i < 4; ++i) {
    rawHub_.Accept();
    EXPECT_EQ(rawHub_.Greet(-1, 4), Hello(5));
    EXPECT_TRUE(rawHub_.IsClosed());
  }
  rawHub_.Accept();
  rawHub_.Greet(5);
  EXPECT_TRUE(client.WaitUntilConnected(kPatience));
  EXPECT_EQ(LinesWith(L"The IPC hub refused this client with status 4(IPCMessageClient::SayHello)"), 1);
}

TEST_F(ClientWire, WaitsTwiceAsLongBeforeEachAttempt) {
  IPCMessageClient client(5, false, false, pipeName_);
  std::vector<std::chrono::steady_clock::time_point> ends;
  std::vector<std::chrono::steady_clock::duration> waits;
  for (int i = 0; i < 6; ++i) {
    rawHub_.Accept();
    if (i > 0) {
      waits.push_back(std::chrono::steady_clock::now() - ends.back());
    }
    rawHub_.Greet(-1, 4);
    ends.push_back(std::chrono::steady_clock::now());
    rawHub_.IsClosed();
  }
  for (std::size_t i = 0; i < waits.size(); ++i) {  // 20, 40, 80, 160 and 320 ms
    EXPECT_GE(waits[i], milliseconds(18) * (1 << i)) << i;
  }
}

TEST_F(ClientWire, LeavesAHubWhoseFirstFrameIsNoAnswerToItsHello) {
  const TestFrame wrong[] = {{.receiver = 5, .sender = 0, .code = 2},
                             {.receiver = 5, .sender = 7, .code = 1},
                             {.receiver = 0, .sender = 0, .code = 1},
                             {.receiver = -1, .sender = 0, .code = 1}};
  IPCMessageClient client(5, false, false, pipeName_);
  for (const TestFrame& answer : wrong) {
    rawHub_.Accept();
    ASSERT_TRUE(rawHub_.Receive());
    rawHub_.Send(answer);
    EXPECT_TRUE(rawHub_.IsClosed());
  }
  EXPECT_FALSE(client.WaitUntilConnected(milliseconds(0)));
  EXPECT_EQ(
      LinesWith(
          L"IPC connection to the hub closed: its first frame is no answer to a hello(IPCMessageClient::SayHello)"),
      1);
}

TEST_F(ClientWire, LeavesAHubThatSendsAMalformedFrameAndComesBack) {
  const auto client = Connect(5);
  rawHub_.Write(TestFrame{.receiver = 5, .sender = 6, .isLast = 2}.Bytes());
  EXPECT_TRUE(rawHub_.IsClosed());
  EXPECT_EQ(LinesWith(L"IPC connection to the hub closed: the isLast byte of a frame is neither 0 nor 1("), 1);
  rawHub_.Accept();
  rawHub_.Greet(5);
  EXPECT_TRUE(client->WaitUntilConnected(kPatience));
}

TEST_F(ClientWire, AServiceRunsNoCallbackWhileItsAnswersDoNotLeave) {
  const auto service = Connect(kServiceId);
  std::atomic<int> refused = 0;
  service->RegisterMessageCallback(
      8, [&](TagIPCMessageItem& item) { refused += Post(*service, item.replyCode, 60'000) ? 0 : 1; });
  constexpr int kRequests = 60;  // whose answers are more than three times what a client queues
  std::string requests;
  for (int i = 0; i < kRequests; ++i) {
    requests += TestFrame{.receiver = kServiceId, .sender = 6, .code = 8, .replyCode = i}.Bytes();
  }
  rawHub_.Write(requests);
  std::this_thread::sleep_for(milliseconds(100));
  for (int i = 0; i < kRequests; ++i) {
    const auto answer = rawHub_.Receive();
    ASSERT_TRUE(answer);
    ASSERT_EQ(answer->code, i);
  }
  EXPECT_EQ(refused, 0);
}

TEST_F(ClientWire, StopDeliverySendsWhatWaits) {
  const auto client = Connect(5);
  for (int i = 0; i < 14; ++i) {  // more than the system takes by itself
    ASSERT_TRUE(Post(*client, i, 60'000));
  }
  std::thread stop([&] { client->StopDelivery(); });
  std::this_thread::sleep_for(milliseconds(50));
  for (int i = 0; i < 14; ++i) {
    const auto frame = rawHub_.Receive();
    EXPECT_TRUE(frame && frame->code == i) << i;
  }
  stop.join();
  EXPECT_TRUE(rawHub_.IsClosed());
}

TEST_F(ClientWire, StopDeliveryDoesNotWaitLongForAHubThatReadsNothing) {
  const auto client = Connect(5);
  for (int i = 0; i < 14; ++i) {
    ASSERT_TRUE(Post(*client, i, 60'000));
  }
  const auto start = std::chrono::steady_clock::now();
  client->StopDelivery();
  const auto took = std::chrono::steady_clock::now() - start;
  EXPECT_GE(took, milliseconds(490));
  EXPECT_LT(took, milliseconds(3'000));
}

}  // namespace
