// Absent, late, full and vanishing hubs, as the typed client meets them.
#include <gtest/gtest.h>

#include <future>
#include <thread>

#include "tests/client/ClientFixture.h"

namespace {

using KT::CallStatus;
using Clock = std::chrono::steady_clock;

class Connection : public support::ClientFixture {
 protected:
  static Answer EchoOne() { return With(std::string("\x01\x00s\0\0\0\0", 7)); }
};

TEST_F(Connection, AnAbsentHubIsAnErrorAtOnceWhereWaitingIsNotWanted) {
  auto options = Options();
  options.waitForService = false;
  KT::RegistryClient client(options);
  const auto start = Clock::now();
  const auto outcome = client.GetPeerDevice("u");
  EXPECT_LT(Clock::now() - start, std::chrono::seconds(5));
  EXPECT_EQ(outcome.status, CallStatus::NoService);
  EXPECT_EQ(outcome.explanation.find("nothing serves the pipe \\\\.\\"), 0U) << outcome.explanation;
}

TEST_F(Connection, AnAbsentHubIsWaitedForUntilTheTimeIsOver) {
  KT::RegistryClient client(Options(std::chrono::milliseconds(200)));
  const auto start = Clock::now();
  EXPECT_EQ(client.GetPeerDevice("u").status, CallStatus::NoService);
  EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(200));
}

TEST_F(Connection, AHubThatComesLateIsFound) {
  KT::RegistryClient client(Options());
  std::thread starter([this] {
    std::this_thread::sleep_for(std::chrono::milliseconds(150));
    StartHub();
    StartService(0xc4000a, EchoOne());
  });
  auto outcome = client.GetPeerDevice("u");
  starter.join();
  if (outcome.status == CallStatus::Refused) {  // the hub was there before the service
    outcome = client.GetPeerDevice("u");
  }
  EXPECT_TRUE(outcome.Succeeded()) << outcome.explanation;
}

TEST_F(Connection, AHubThatGoesWhileACallWaitsEndsTheCall) {
  StartHub();
  std::promise<void> asked;
  std::thread stopper([this, &asked] {
    asked.get_future().wait();
    StopHub();
  });
  StartService(0xc4000a, [&asked](IPCMessageClient&, const TagIPCMessageItem&) { asked.set_value(); });
  KT::RegistryClient client(Options());
  const auto outcome = client.GetPeerDevice("u");
  stopper.join();
  EXPECT_EQ(outcome.status, CallStatus::ConnectionLost);
  EXPECT_EQ(outcome.explanation, "the connection ended before the answer came; the service may or may not have acted");
}

TEST_F(Connection, TheNextCallFindsAHubThatCameBack) {
  StartHub();
  StartService(0xc4000a, EchoOne());
  KT::RegistryClient client(Options());
  EXPECT_TRUE(client.GetPeerDevice("u").Succeeded());
  StopHub();
  StartHub();
  auto outcome = client.GetPeerDevice("u");
  // Sent into the connection that was ending, or to the new hub before the service had noticed it.
  for (const auto end = Clock::now() + std::chrono::seconds(10); !outcome.Succeeded() && Clock::now() < end;) {
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    outcome = client.GetPeerDevice("u");
  }
  EXPECT_TRUE(outcome.Succeeded()) << outcome.explanation;
}

TEST_F(Connection, AHubThatWentIsNoticedAtOnceWhereWaitingIsNotWanted) {
  StartHub();
  StartService(0xc4000a, EchoOne());
  auto options = Options();
  options.waitForService = false;
  KT::RegistryClient client(options);
  EXPECT_TRUE(client.GetPeerDevice("u").Succeeded());
  StopHub();
  const auto start = Clock::now();
  EXPECT_FALSE(client.GetPeerDevice("u").Succeeded());
  EXPECT_LT(Clock::now() - start, std::chrono::seconds(5));
}

}  // namespace
