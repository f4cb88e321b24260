// What a hub grants one peer, and no more.
#include <thread>

#include "tests/platform/ipc/IpcTest.h"

namespace {

using std::chrono::milliseconds;
using HubLimit = IpcTest;

TEST_F(HubLimit, DefaultsAreTheProtocols) {
  const HubLimits limits;
  EXPECT_EQ(limits.connections, 256U);
  EXPECT_EQ(limits.unreadBytesPerConnection, 1'048'576U);
  EXPECT_EQ(limits.helloTimeout, milliseconds(5'000));
  EXPECT_EQ(limits.frameTimeout, milliseconds(30'000));
}

TEST_F(HubLimit, Of256ConnectionsRefusesThe257th) {
  StartHub();
  std::vector<std::unique_ptr<RawPeer>> peers;
  for (int i = 0; i < 256; ++i) {
    peers.push_back(std::make_unique<RawPeer>(pipeName_));
    ASSERT_NE(peers.back()->SayHello(), -1) << i;
  }
  RawPeer oneTooMany(pipeName_);
  EXPECT_TRUE(oneTooMany.IsClosed());
  EXPECT_EQ(LinesWith(L" refused: as many connections as are allowed are open(IPCMessageHub::CutOff)"), 1);
  peers.pop_back();
  EXPECT_TRUE(Eventually([&] { return RawPeer(pipeName_).SayHello() != -1; }));
}

TEST_F(HubLimit, EndsAConnectionThatSaysNoHelloInTime) {
  StartHub({.helloTimeout = milliseconds(150)});
  const auto start = std::chrono::steady_clock::now();
  RawPeer silent(pipeName_);
  RawPeer half(pipeName_);
  half.Write(Hello().Bytes().substr(0, 20));
  RawPeer polite(pipeName_);
  ASSERT_EQ(polite.SayHello(7), 7);
  EXPECT_TRUE(silent.IsClosed());
  EXPECT_GE(std::chrono::steady_clock::now() - start, milliseconds(145));
  EXPECT_TRUE(half.IsClosed());
  EXPECT_FALSE(polite.IsClosed(milliseconds(300)));
  EXPECT_EQ(LinesWith(L" closed: it did not say hello in time(IPCMessageHub::CutOff)"), 2);
}

TEST_F(HubLimit, EndsAConnectionWhoseHelloDripsInTooSlowly) {
  StartHub({.helloTimeout = milliseconds(150)});
  RawPeer dripping(pipeName_);
  for (const char byte : Hello().Bytes().substr(0, 34)) {
    dripping.Write(std::string(1, byte));
    std::this_thread::sleep_for(milliseconds(10));
  }
  EXPECT_TRUE(dripping.IsClosed());
}

TEST_F(HubLimit, EndsAConnectionWhoseFrameIsNotCompleteInTime) {
  StartHub({.frameTimeout = milliseconds(150)});
  RawPeer slow(pipeName_);
  RawPeer idle(pipeName_);
  ASSERT_EQ(slow.SayHello(5), 5);
  ASSERT_EQ(idle.SayHello(6), 6);
  const auto start = std::chrono::steady_clock::now();
  slow.Write("\x1f");
  EXPECT_TRUE(slow.IsClosed());
  EXPECT_GE(std::chrono::steady_clock::now() - start, milliseconds(145));
  EXPECT_FALSE(idle.IsClosed(milliseconds(1)));
  EXPECT_EQ(LinesWith(L", client 5 closed: a frame of it was not complete in time(IPCMessageHub::CutOff)"), 1);
}

TEST_F(HubLimit, CountsEachFramesTimeFromItsOwnFirstByte) {
  StartHub({.frameTimeout = milliseconds(400)});
  RawPeer peer(pipeName_);
  ASSERT_EQ(peer.SayHello(5), 5);
  const std::string frame = TestFrame{.receiver = 5, .code = 8}.Bytes();
  peer.Write(frame.substr(0, 10));
  for (int i = 0; i < 5; ++i) {  // always in the middle of a frame, for longer than one may take
    std::this_thread::sleep_for(milliseconds(150));
    peer.Write(frame.substr(10) + frame.substr(0, 10));
    ASSERT_TRUE(peer.Receive()) << i;
  }
}

TEST_F(HubLimit, CutsOffAPeerThatStopsReading) {
  StartHub();
  RawPeer deaf(pipeName_);
  RawPeer sender(pipeName_);
  ASSERT_EQ(deaf.SayHello(5), 5);
  ASSERT_EQ(sender.SayHello(6), 6);
  const TestFrame large{.receiver = 5, .code = 8, .replyCode = 42, .payload = std::string(65'000, 'x')};
  std::optional<TestFrame> status;
  for (int i = 0; i < 100 && !status; ++i) {  // 1 MiB, and what the system itself keeps
    sender.Send(large);
    status = sender.Receive(milliseconds(i < 14 ? 0 : 20));
  }
  EXPECT_EQ(status, Status(6, 0, 42, 1));
  EXPECT_TRUE(deaf.IsClosed());
  EXPECT_EQ(LinesWith(L", client 5 closed: too much waits for it to be read(IPCMessageHub::CutOff)"), 1);
  EXPECT_EQ(LinesWith(L"IPC connection"), 1);
}

TEST_F(HubLimit, KeepsWhatIsLessForAPeerThatReadsLate) {
  StartHub();
  RawPeer late(pipeName_);
  RawPeer sender(pipeName_);
  ASSERT_EQ(late.SayHello(5), 5);
  ASSERT_EQ(sender.SayHello(6), 6);
  for (int i = 0; i < 16; ++i) {  // 1,040,560 bytes
    sender.Send({.receiver = 5, .code = i, .payload = std::string(65'000, 'x')});
  }
  sender.Send({.receiver = 6, .code = 8});
  ASSERT_TRUE(sender.Receive());  // so the hub has them all
  for (int i = 0; i < 16; ++i) {
    const auto frame = late.Receive();
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->code, i);
    EXPECT_EQ(frame->payload.size(), 65'000U);
  }
  EXPECT_EQ(LinesWith(L""), 0);
}

}  // namespace
