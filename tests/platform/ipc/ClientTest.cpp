// The promises of IPCMessageClient, against a real hub.
#include <atomic>
#include <future>
#include <stdexcept>
#include <thread>

#include "tests/platform/ipc/IpcTest.h"

namespace {

using std::chrono::milliseconds;

constexpr int kServiceId = 0xc40000;

class Client : public IpcTest {
 protected:
  Client() {
    StartHub();
    client_ = std::make_unique<IPCMessageClient>(5, false, false, pipeName_);
    EXPECT_TRUE(client_->WaitUntilConnected(kPatience));
    peer_ = std::make_unique<RawPeer>(pipeName_);
    EXPECT_EQ(peer_->SayHello(6), 6);
  }
  ~Client() override { client_->StopDelivery(); }

  // A frame from the peer to the client.
  void SendToClient(std::int32_t code, std::int32_t replyCode = -1) {
    peer_->Send({.receiver = 5, .code = code, .replyCode = replyCode});
  }

  // Posts a payload of that length to the peer.
  bool Post(int length, std::string payload, const std::string& name = {}, int code = 42) {
    TagIPCMessageItem item;
    item.name = name;
    item.receiver = 6;
    item.code = code;
    item.replyCode = 9;
    item.length = length;
    item.payload = payload.data();
    return client_->PostIPCMessage(item);
  }

  std::unique_ptr<IPCMessageClient> client_;
  std::unique_ptr<RawPeer> peer_;
};

TEST_F(Client, HandsEveryFieldToTheCallback) {
  std::promise<TagIPCMessageItem> received;
  std::string payload;
  client_->RegisterMessageCallback(8, [&](TagIPCMessageItem& item) {
    payload.assign(item.payload, static_cast<std::size_t>(item.length));
    received.set_value(item);
  });
  peer_->Send({.receiver = 5,
               .code = 8,
               .replyCode = 42,
               .session = 3,
               .isLast = 0,
               .extra = 4,
               .name = "n",
               .payload = std::string("a\0b", 3)});
  const TagIPCMessageItem item = received.get_future().get();
  EXPECT_EQ(item.name, "n");
  EXPECT_EQ(item.receiver, 5);
  EXPECT_EQ(item.sender, 6);
  EXPECT_EQ(item.code, 8);
  EXPECT_EQ(item.replyCode, 42);
  EXPECT_EQ(item.session, 3);
  EXPECT_EQ(item.status, 0);
  EXPECT_EQ(item.length, 3);
  EXPECT_FALSE(item.isLast);
  EXPECT_EQ(item.extra, 4);
  EXPECT_EQ(payload, std::string("a\0b", 3));
}

TEST_F(Client, HandsOverANullPointerWhereThereIsNoPayload) {
  std::promise<TagIPCMessageItem> received;
  client_->RegisterMessageCallback(8, [&](TagIPCMessageItem& item) { received.set_value(item); });
  peer_->Send({.receiver = 5, .code = 8, .name = "only a name"});
  const TagIPCMessageItem item = received.get_future().get();
  EXPECT_EQ(item.payload, nullptr);
  EXPECT_EQ(item.length, 0);
}

TEST_F(Client, SendsItsFieldsAndSetsTheRest) {
  std::string payload = "text";
  TagIPCMessageItem item;
  item.name = "n";
  item.receiver = 6;
  item.sender = 99;
  item.code = 42;
  item.replyCode = 9;
  item.session = 98;
  item.status = 97;
  item.length = 4;
  item.payload = payload.data();
  item.isLast = false;
  item.extra = 96;
  EXPECT_TRUE(client_->PostIPCMessage(item));
  EXPECT_EQ(peer_->Receive(),
            (TestFrame{.receiver = 6, .sender = 5, .code = 42, .replyCode = 9, .name = "n", .payload = "text"}));
}

TEST_F(Client, SendsTheLargestPayload) {
  EXPECT_TRUE(Post(65'505, std::string(65'505, 'x')));
  const auto frame = peer_->Receive();
  ASSERT_TRUE(frame);
  EXPECT_EQ(frame->payload, std::string(65'505, 'x'));
}

TEST_F(Client, SendsAStatusInPlaceOfAPayloadThatIsTooLarge) {
  EXPECT_FALSE(Post(65'506, std::string(65'506, 'x')));
  EXPECT_EQ(peer_->Receive(), Status(6, 5, 42, 3));
}

TEST_F(Client, SendsAStatusInPlaceOfAPayloadThatIsTooLargeBesideItsName) {
  EXPECT_TRUE(Post(65'495, std::string(65'495, 'x'), std::string(10, 'n')));
  EXPECT_TRUE(peer_->Receive());
  EXPECT_FALSE(Post(65'496, std::string(65'496, 'x'), std::string(10, 'n')));
  EXPECT_EQ(peer_->Receive(), Status(6, 5, 42, 3));
}

TEST_F(Client, SendsAStatusInPlaceOfANegativeLength) {
  EXPECT_FALSE(Post(-1, "x"));
  EXPECT_EQ(peer_->Receive(), Status(6, 5, 42, 3));
  EXPECT_FALSE(Post(INT32_MIN, "x"));
  EXPECT_EQ(peer_->Receive(), Status(6, 5, 42, 3));
}

TEST_F(Client, SendsAStatusInPlaceOfANullPayloadWithALength) {
  TagIPCMessageItem item;
  item.receiver = 6;
  item.code = 42;
  item.length = 1;
  EXPECT_FALSE(client_->PostIPCMessage(item));
  EXPECT_EQ(peer_->Receive(), Status(6, 5, 42, 3));
}

TEST_F(Client, SendsAStatusInPlaceOfANameThatWouldCostItTheConnection) {
  EXPECT_FALSE(Post(1, "x", "\xff"));
  EXPECT_EQ(peer_->Receive(), Status(6, 5, 42, 3));
  EXPECT_FALSE(Post(0, "", std::string(65'506, 'n')));
  EXPECT_EQ(peer_->Receive(), Status(6, 5, 42, 3));
}

TEST_F(Client, SendsNoStatusWhereNobodyWaits) {
  EXPECT_FALSE(Post(-1, "x", {}, -1));
  EXPECT_TRUE(Post(1, "x"));
  const auto frame = peer_->Receive();
  ASSERT_TRUE(frame);
  EXPECT_EQ(frame->status, 0);
}

TEST_F(Client, AnswersARequestThatHasNoCallback) {
  SendToClient(8, 42);
  EXPECT_EQ(peer_->Receive(), Status(6, 5, 42, 2));
}

TEST_F(Client, DropsWhatHasNoCallbackAndExpectsNoAnswer) {
  SendToClient(8, -1);
  SendToClient(-1, -1);
  SendToClient(8, 42);
  EXPECT_EQ(peer_->Receive(), Status(6, 5, 42, 2));  // to the last of them
}

TEST_F(Client, NeverAnswersAStatus) {
  peer_->Send({.receiver = 5, .code = 8, .replyCode = 41, .status = 2});
  SendToClient(8, 42);
  EXPECT_EQ(peer_->Receive(), Status(6, 5, 42, 2));
}

TEST_F(Client, HandsStatusesToTheCallbackThatWaitsForTheAnswer) {
  std::promise<int> status;
  client_->RegisterMessageCallback(42, [&](TagIPCMessageItem& item) { status.set_value(item.status); });
  TagIPCMessageItem request;
  request.receiver = 1'000;
  request.code = 8;
  request.replyCode = 42;
  EXPECT_TRUE(client_->PostIPCMessage(request));
  EXPECT_EQ(status.get_future().get(), static_cast<int>(IpcStatus::NoSuchReceiver));
}

TEST_F(Client, RunsOneCallbackAtATimeInOrderOnOneThread) {
  std::atomic<int> running = 0;
  std::vector<int> order;
  std::vector<std::thread::id> threads;
  std::promise<void> done;
  const auto callback = [&](TagIPCMessageItem& item) {
    EXPECT_EQ(++running, 1);
    order.push_back(item.replyCode);
    threads.push_back(std::this_thread::get_id());
    std::this_thread::sleep_for(std::chrono::microseconds(200));
    --running;
    if (order.size() == 200) {
      done.set_value();
    }
  };
  client_->RegisterMessageCallback(8, callback);
  client_->RegisterMessageCallback(9, callback);
  for (int i = 0; i < 200; ++i) {
    SendToClient(8 + i % 2, i);
  }
  done.get_future().wait();
  for (int i = 0; i < 200; ++i) {
    EXPECT_EQ(order[static_cast<std::size_t>(i)], i);
    EXPECT_EQ(threads[static_cast<std::size_t>(i)], threads[0]);
  }
  EXPECT_NE(threads[0], std::this_thread::get_id());
}

TEST_F(Client, ASecondRegistrationReplacesTheFirst) {
  std::atomic<int> first = 0;
  std::promise<void> second;
  client_->RegisterMessageCallback(8, [&](TagIPCMessageItem&) { ++first; });
  client_->RegisterMessageCallback(8, [&](TagIPCMessageItem&) { second.set_value(); });
  SendToClient(8);
  second.get_future().wait();
  EXPECT_EQ(first, 0);
}

class Receiver {
 public:
  void Receive(TagIPCMessageItem& item) { code_.set_value(item.code); }
  int Code() { return code_.get_future().get(); }

 private:
  std::promise<int> code_;
};

TEST_F(Client, CallsAMemberFunction) {
  Receiver receiver;
  client_->RegisterMessageCallback(8, &receiver, &Receiver::Receive);
  SendToClient(8);
  EXPECT_EQ(receiver.Code(), 8);
}

TEST_F(Client, UnregistrationWaitsForTheRunningCallback) {
  std::promise<void> begun;
  std::atomic<bool> ended = false;
  client_->RegisterMessageCallback(8, [&](TagIPCMessageItem&) {
    begun.set_value();
    std::this_thread::sleep_for(milliseconds(100));
    ended = true;
  });
  SendToClient(8);
  begun.get_future().wait();
  EXPECT_TRUE(client_->UnRegisterMessageCallbackAll());
  EXPECT_TRUE(ended);
}

TEST_F(Client, NoCallbackRunsAfterUnregistration) {
  std::atomic<int> calls = 0;
  client_->RegisterMessageCallback(8, [&](TagIPCMessageItem&) { ++calls; });
  client_->RegisterMessageCallback(9, [&](TagIPCMessageItem&) { ++calls; });
  EXPECT_TRUE(client_->UnRegisterMessageCallbackAll());
  SendToClient(8, 42);
  SendToClient(9, 43);
  EXPECT_EQ(peer_->Receive(), Status(6, 5, 42, 2));
  EXPECT_EQ(peer_->Receive(), Status(6, 5, 43, 2));
  EXPECT_EQ(calls, 0);
}

TEST_F(Client, UnregistrationFromInsideACallbackDoesNotWaitForItself) {
  std::promise<bool> result;
  client_->RegisterMessageCallback(
      8, [&](TagIPCMessageItem&) { result.set_value(client_->UnRegisterMessageCallbackAll()); });
  SendToClient(8);
  auto future = result.get_future();
  ASSERT_EQ(future.wait_for(kPatience), std::future_status::ready);
  EXPECT_TRUE(future.get());
}

TEST_F(Client, ACallbackMayRegisterAnother) {
  std::promise<void> second;
  client_->RegisterMessageCallback(8, [&](TagIPCMessageItem&) {
    client_->RegisterMessageCallback(9, [&](TagIPCMessageItem&) { second.set_value(); });
  });
  SendToClient(8);
  SendToClient(9);
  EXPECT_EQ(second.get_future().wait_for(kPatience), std::future_status::ready);
}

TEST_F(Client, AnExceptionFromACallbackIsLoggedAndCostsNothingElse) {
  client_->RegisterMessageCallback(8, [](TagIPCMessageItem&) { throw std::runtime_error("it broke"); });
  client_->RegisterMessageCallback(9, [](TagIPCMessageItem&) { throw 1; });
  std::promise<void> next;
  client_->RegisterMessageCallback(10, [&](TagIPCMessageItem&) { next.set_value(); });
  SendToClient(8);
  SendToClient(9);
  SendToClient(10);
  next.get_future().wait();
  EXPECT_EQ(LinesWith(L"Exception from the IPC callback for code 8: it broke(IPCMessageClient::RunCallback)"), 1);
  EXPECT_EQ(LinesWith(L"Exception from the IPC callback for code 9(IPCMessageClient::RunCallback)"), 1);
  EXPECT_EQ(LinesWith(L""), 2);
}

TEST_F(Client, PostsFromManyThreadsArriveWholeAndInEachThreadsOrder) {
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([this, thread] {
      for (int i = 0; i < 200; ++i) {
        EXPECT_TRUE(Post(500, std::string(500, static_cast<char>('a' + thread)), {}, 1'000 * thread + i));
      }
    });
  }
  int next[4] = {};
  for (int i = 0; i < 800; ++i) {
    const auto frame = peer_->Receive();
    ASSERT_TRUE(frame);
    const int thread = frame->code / 1'000;
    ASSERT_EQ(frame->code, 1'000 * thread + next[thread]++);
    ASSERT_EQ(frame->payload, std::string(500, static_cast<char>('a' + thread)));
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
}

TEST_F(Client, RefusesAPostWhenTooMuchWaits) {
  // A service that does not read: the hub holds this client up, and its queue fills.
  RawPeer service(pipeName_);
  ASSERT_EQ(service.SayHello(kServiceId), kServiceId);
  std::string payload(60'000, 'x');
  TagIPCMessageItem item;
  item.receiver = kServiceId;
  item.code = 8;
  item.payload = payload.data();
  item.length = static_cast<int>(payload.size());
  int posted = 0;
  while (posted < 100 && client_->PostIPCMessage(item)) {
    ++posted;
    std::this_thread::sleep_for(milliseconds(2));
  }
  EXPECT_GE(posted, 17);
  EXPECT_LT(posted, 100);
  for (int i = 0; i < posted; ++i) {  // nothing of what was taken is lost
    ASSERT_TRUE(service.Receive());
  }
  EXPECT_TRUE(client_->PostIPCMessage(item));
}

TEST_F(Client, StopDeliveryWaitsForTheRunningCallbackAndSendsWhatItPosted) {
  std::promise<void> begun;
  client_->RegisterMessageCallback(8, [&](TagIPCMessageItem&) {
    begun.set_value();
    std::this_thread::sleep_for(milliseconds(50));
    EXPECT_TRUE(Post(4, "last"));
  });
  SendToClient(8);
  begun.get_future().wait();
  client_->StopDelivery();
  const auto frame = peer_->Receive();
  ASSERT_TRUE(frame);
  EXPECT_EQ(frame->payload, "last");
  EXPECT_FALSE(Post(1, "x"));
}

TEST_F(Client, NoCallbackRunsAfterStopDelivery) {
  std::atomic<int> calls = 0;
  client_->RegisterMessageCallback(8, [&](TagIPCMessageItem&) {
    ++calls;
    std::this_thread::sleep_for(milliseconds(1));
  });
  for (int i = 0; i < 500; ++i) {
    SendToClient(8);
  }
  EXPECT_TRUE(Eventually([&] { return calls > 0; }));
  client_->StopDelivery();
  const int atStop = calls;
  std::this_thread::sleep_for(milliseconds(20));
  EXPECT_EQ(calls, atStop);
  EXPECT_LT(atStop, 500);
  client_->StopDelivery();
  EXPECT_FALSE(client_->WaitUntilConnected(milliseconds(0)));
}

TEST_F(Client, StopDeliveryFromInsideACallbackStopsAfterIt) {
  std::atomic<int> calls = 0;
  client_->RegisterMessageCallback(8, [&](TagIPCMessageItem&) {
    ++calls;
    client_->StopDelivery();
    EXPECT_TRUE(Post(4, "last"));
  });
  SendToClient(8);
  SendToClient(8);
  const auto frame = peer_->Receive();
  ASSERT_TRUE(frame);
  EXPECT_EQ(frame->payload, "last");
  client_->StopDelivery();
  EXPECT_EQ(calls, 1);
}

}  // namespace
