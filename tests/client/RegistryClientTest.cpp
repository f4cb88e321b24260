// What the typed client sends and how it reads answers.
#include "client/RegistryClient.h"

#include <gtest/gtest.h>

#include <future>
#include <thread>

#include "tests/client/ClientFixture.h"

namespace {

using KT::CallStatus;
using namespace std::string_literals;

const std::string kResultZero("\0\0\0\0", 4);

class Calls : public support::ClientFixture {
 protected:
  Calls() { StartHub(); }
};

TEST_F(Calls, SetPeerSendsBothStringsAndReadsTheResult) {
  StartService(0xc40009, With(std::string("\x7C\xEC\xFF\xFF", 4)));
  KT::RegistryClient client(Options());
  const auto outcome = client.SetPeerDevice("u1", "s\xC3\xA9");
  EXPECT_EQ(outcome.status, CallStatus::Answered);
  EXPECT_EQ(outcome.response.result, -4996);
  EXPECT_FALSE(outcome.Succeeded());
  ASSERT_EQ(Requests().size(), 1U);
  EXPECT_EQ(Requests()[0].payload, std::string("\x02\x00u1\x03\x00s\xC3\xA9", 9));
}

TEST_F(Calls, GetPeerReadsTheSumId) {
  StartService(0xc4000a, With(std::string("\x03\x00sum\0\0\0\0", 9)));
  KT::RegistryClient client(Options());
  const auto outcome = client.GetPeerDevice("u1");
  EXPECT_TRUE(outcome.Succeeded());
  EXPECT_EQ(outcome.response.sumId, "sum");
  EXPECT_EQ(outcome.explanation, "");
}

TEST_F(Calls, DeviceRequestsCarryThePackageNameAndTheKey) {
  StartService(0xc40004, With(kResultZero));
  KT::RegistryClient client(Options());
  EXPECT_TRUE(client.DeleteTrustedZentapDeviceInfo("key").Succeeded());
  EXPECT_EQ(Requests().at(0).payload, std::string("\x03\x00pkg\x03\x00key", 10));
}

TEST_F(Calls, ListRequestsCarryThePackageNameAlone) {
  StartService(0xc40007, With(std::string("\x03\x00pkg\0\0\0\0\0\0\0\0", 13)));
  KT::RegistryClient client(Options());
  const auto outcome = client.GetCurrZentapDeviceInfoList();
  EXPECT_TRUE(outcome.Succeeded());
  EXPECT_EQ(outcome.response.pkgName, "pkg");
  EXPECT_TRUE(outcome.response.list.empty());
  EXPECT_EQ(Requests().at(0).payload, std::string("\x03\x00pkg", 5));
}

TEST_F(Calls, EachMemberAsksUnderItsOwnCode) {
  for (int code = 0xc40001; code <= 0xc4000b; ++code) {
    StartService(code, With("unreadable"));
  }
  KT::RegistryClient client(Options());
  client.SetTrustedZentapDeviceInfo("k", {});
  client.GetTrustedZentapDeviceInfo("k");
  client.GetTrustedZentapDeviceInfoList();
  client.DeleteTrustedZentapDeviceInfo("k");
  client.SetCurrZentapDeviceInfo("k", {});
  client.GetCurrZentapDeviceInfo("k");
  client.GetCurrZentapDeviceInfoList();
  client.DeleteCurrZentapDeviceInfo("k");
  client.SetPeerDevice("k", "s");
  client.GetPeerDevice("k");
  client.DeletePeerDevice("k");
  const auto requests = Requests();
  ASSERT_EQ(requests.size(), 11U);
  for (int i = 0; i < 11; ++i) {
    EXPECT_EQ(requests[static_cast<std::size_t>(i)].code, 0xc40001 + i);
  }
}

TEST_F(Calls, ARequestOfTheLargestPayloadIsSentAndOneByteMoreIsNot) {
  StartService(0xc40009, With(kResultZero));
  KT::RegistryClient client(Options());
  EXPECT_TRUE(client.SetPeerDevice("u", std::string(10'235, 's')).Succeeded());
  EXPECT_EQ(Requests().at(0).payload.size(), 10'240U);
  const auto outcome = client.SetPeerDevice("u", std::string(10'236, 's'));
  EXPECT_EQ(outcome.status, CallStatus::RequestTooLarge);
  EXPECT_EQ(outcome.explanation, "the request takes 10241 bytes; the service decodes at most 10240");
  EXPECT_EQ(Requests().size(), 1U);
}

TEST_F(Calls, AnAnswerOfTheWrongSizeIsUnreadable) {
  KT::RegistryClient client(Options());
  StartService(0xc40009, With("\0\0\0"s));
  EXPECT_EQ(client.SetPeerDevice("u", "s").status, CallStatus::UnreadableAnswer);
  StartService(0xc40009, With("\0\0\0\0\0"s));
  const auto outcome = client.SetPeerDevice("u", "s");
  EXPECT_EQ(outcome.status, CallStatus::UnreadableAnswer);
  EXPECT_EQ(outcome.explanation, "the answer of 5 bytes is not the message that belongs to this request");
  StartService(0xc40009, With(""));
  EXPECT_EQ(client.SetPeerDevice("u", "s").status, CallStatus::UnreadableAnswer);
}

TEST_F(Calls, StatusesOfTheIpcLibraryAreToldApart) {
  KT::RegistryClient client(Options());
  auto outcome = client.GetPeerDevice("u");
  EXPECT_EQ(outcome.status, CallStatus::Refused);
  EXPECT_EQ(outcome.ipcStatus, IpcStatus::NoSuchReceiver);
  StartService(0xc40009, With(kResultZero));
  outcome = client.GetPeerDevice("u");
  EXPECT_EQ(outcome.status, CallStatus::Refused);
  EXPECT_EQ(outcome.ipcStatus, IpcStatus::NoCallback);
  StartService(0xc4000a, [](IPCMessageClient& answering, const TagIPCMessageItem& request) {
    TagIPCMessageItem item;
    item.receiver = request.sender;
    item.code = request.replyCode;
    item.length = -1;
    answering.PostIPCMessage(item);
  });
  outcome = client.GetPeerDevice("u");
  EXPECT_EQ(outcome.status, CallStatus::Refused);
  EXPECT_EQ(outcome.ipcStatus, IpcStatus::UnsendableAnswer);
  EXPECT_FALSE(outcome.explanation.empty());
}

TEST_F(Calls, ALateAnswerIsNotTakenForThatOfTheNextCall) {
  TagIPCMessageItem unanswered;
  int calls = 0;
  StartService(0xc4000a, [&](IPCMessageClient& answering, const TagIPCMessageItem& request) {
    if (++calls == 1) {
      unanswered = request;
      return;
    }
    Reply(answering, unanswered, std::string("\x03\x00old\0\0\0\0", 9));
    Reply(answering, request, std::string("\x03\x00new\0\0\0\0", 9));
  });
  KT::RegistryClient client(Options(std::chrono::milliseconds(300)));
  EXPECT_EQ(client.GetPeerDevice("u").status, CallStatus::TimedOut);
  const auto outcome = client.GetPeerDevice("u");
  EXPECT_EQ(outcome.status, CallStatus::Answered);
  EXPECT_EQ(outcome.response.sumId, "new");
}

TEST_F(Calls, AnAnswerFromAnotherClientIsIgnored) {
  IPCMessageClient forger(IPCMessageClient::kAnyClientId, false, false, pipeName);
  ASSERT_TRUE(forger.WaitUntilConnected(std::chrono::seconds(10)));
  StartService(0xc4000a, [&forger](IPCMessageClient& answering, const TagIPCMessageItem& request) {
    Reply(forger, request,
          std::string("\x06\x00"
                      "forged\0\0\0\0",
                      12));
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    Reply(answering, request, std::string("\x04\x00real\0\0\0\0", 10));
  });
  KT::RegistryClient client(Options());
  EXPECT_EQ(client.GetPeerDevice("u").response.sumId, "real");
}

TEST_F(Calls, OfManyThreadsAreEachAnsweredOnce) {
  StartService(0xc4000a, [](IPCMessageClient& answering, const TagIPCMessageItem& request) {
    const std::string udId(request.payload, static_cast<std::size_t>(request.length));
    Reply(answering, request, udId + std::string("\0\0\0\0", 4));  // the udId comes back as the sumId
  });
  KT::RegistryClient client(Options());
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([&client, thread] {
      for (int call = 0; call < 50; ++call) {
        const std::string udId = std::to_string(thread) + "-" + std::to_string(call);
        EXPECT_EQ(client.GetPeerDevice(udId).response.sumId, udId);
      }
    });
  }
  for (auto& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(Requests().size(), 200U);
}

using HostStatus = support::ClientFixture;

TEST_F(HostStatus, IsTheHubsDocument) {
  StartHub([] { return std::string("{\"a\":1}"); });
  KT::RegistryClient client(Options());
  const auto outcome = client.GetHostStatus();
  EXPECT_TRUE(outcome.Succeeded());
  EXPECT_EQ(outcome.response.document, "{\"a\":1}");
  EXPECT_EQ(outcome.explanation, "");
}

TEST_F(HostStatus, IsRefusedByAHubThatOffersNone) {
  StartHub();
  KT::RegistryClient client(Options());
  const auto outcome = client.GetHostStatus();
  EXPECT_EQ(outcome.status, CallStatus::Refused);
  EXPECT_EQ(outcome.ipcStatus, IpcStatus::NoCallback);
  EXPECT_FALSE(outcome.Succeeded());
}

TEST_F(HostStatus, ComesWhileTheServiceIsBusy) {
  StartHub([] { return std::string("status"); });
  std::promise<void> release;
  StartService(0xc4000a,
               [held = release.get_future().share()](IPCMessageClient&, const TagIPCMessageItem&) { held.wait(); });
  std::thread stuck([this] { KT::RegistryClient(Options()).GetPeerDevice("u"); });
  while (Requests().empty()) {
    std::this_thread::yield();
  }
  KT::RegistryClient client(Options());
  EXPECT_EQ(client.GetHostStatus().response.document, "status");
  release.set_value();
  StopHub();  // ends the call that gets no answer
  stuck.join();
}

}  // namespace
