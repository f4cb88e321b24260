// The first frame of a connection and the hub's answer to it.
#include "tests/platform/ipc/IpcTest.h"
#include "tests/platform/ipc/IpcTestSystem.h"

namespace {

using HubHello = IpcTest;

TEST_F(HubHello, GrantsTheIdThatIsWanted) {
  StartHub();
  RawPeer peer(pipeName_);
  peer.Send(Hello(77));
  EXPECT_EQ(peer.Receive(), HelloAnswer(77));
}

TEST_F(HubHello, AnswersWithTheBytesOfTheProtocol) {
  StartHub();
  RawPeer peer(pipeName_);
  peer.Send(Hello(77));
  const std::string expected(
      "\x1f\x00\x00\x00"
      "\x4d\x00\x00\x00"  // receiver 77
      "\x00\x00\x00\x00"  // sender: the hub
      "\x01\x00\x00\x00"
      "\xff\xff\xff\xff"
      "\xff\xff\xff\xff"
      "\x00\x00\x00\x00"
      "\x01"
      "\x00\x00\x00\x00"
      "\x00\x00",
      35);
  EXPECT_EQ(peer.Receive().value_or(TestFrame{}).Bytes(), expected);
}

TEST_F(HubHello, GrantsDifferentIdsBelowTheReservedOnesToThoseWhoTakeAny) {
  StartHub();
  RawPeer one(pipeName_);
  RawPeer two(pipeName_);
  const std::int32_t first = one.SayHello();
  const std::int32_t second = two.SayHello();
  EXPECT_GT(first, 0);
  EXPECT_LT(first, 0x10000);
  EXPECT_GT(second, 0);
  EXPECT_LT(second, 0x10000);
  EXPECT_NE(first, second);
}

TEST_F(HubHello, DoesNotGrantAnIdAgainAtOnce) {
  StartHub();
  std::int32_t first = 0;
  {
    RawPeer one(pipeName_);
    first = one.SayHello();
  }
  RawPeer two(pipeName_);
  EXPECT_NE(two.SayHello(), first);
}

TEST_F(HubHello, PassesOverIdsThatWereAskedFor) {
  StartHub();
  RawPeer one(pipeName_);
  RawPeer two(pipeName_);
  EXPECT_EQ(one.SayHello(1), 1);
  EXPECT_EQ(two.SayHello(), 2);
}

TEST_F(HubHello, IsAnsweredWithCode1WhateverItsReplyCode) {
  StartHub();
  RawPeer peer(pipeName_);
  TestFrame hello = Hello(5);
  hello.replyCode = 99;
  peer.Send(hello);
  EXPECT_EQ(peer.Receive(), HelloAnswer(5));
}

TEST_F(HubHello, MayCarryANameAndAPayload) {
  StartHub();
  RawPeer peer(pipeName_);
  TestFrame hello = Hello(5);
  hello.name = "me";
  hello.payload = "and more";
  peer.Send(hello);
  EXPECT_EQ(peer.Receive(), HelloAnswer(5));
}

TEST_F(HubHello, MayCloselyBeFollowedByAFrame) {
  StartHub();
  RawPeer peer(pipeName_);
  const TestFrame frame{.receiver = 5, .sender = 5, .code = 8, .payload = "to myself"};
  peer.Write(Hello(5).Bytes() + frame.Bytes());
  EXPECT_EQ(peer.Receive(), HelloAnswer(5));
  EXPECT_EQ(peer.Receive(), frame);
}

// What a refused peer gets: a status, then the end of the connection.
void ExpectRefusal(RawPeer& peer, const TestFrame& hello, std::int32_t status) {
  peer.Send(hello);
  EXPECT_EQ(peer.Receive(), HelloAnswer(-1, status));
  EXPECT_TRUE(peer.IsClosed());
}

TEST_F(HubHello, IsRefusedWhileAnotherHasTheId) {
  StartHub();
  RawPeer owner(pipeName_);
  ASSERT_EQ(owner.SayHello(5), 5);
  RawPeer peer(pipeName_);
  ExpectRefusal(peer, Hello(5), 4);
  EXPECT_EQ(LinesWith(L" refused: the id that it wants is taken: 5(IPCMessageHub::CutOff)"), 1);
  owner.Send({.receiver = 5, .code = 8});
  EXPECT_TRUE(owner.Receive());
}

TEST_F(HubHello, IsGrantedAnIdWhoseOwnerHasGone) {
  StartHub();
  {
    RawPeer owner(pipeName_);
    ASSERT_EQ(owner.SayHello(5), 5);
  }
  EXPECT_TRUE(Eventually([&] { return RawPeer(pipeName_).SayHello(5) == 5; }));
}

TEST_F(HubHello, IsRefusedTheHubsOwnId) {
  StartHub();
  RawPeer peer(pipeName_);
  ExpectRefusal(peer, Hello(0), 4);
}

TEST_F(HubHello, IsRefusedANegativeId) {
  StartHub();
  for (const std::int32_t id : {-2, INT32_MIN}) {
    RawPeer peer(pipeName_);
    ExpectRefusal(peer, Hello(id), 5);
  }
  EXPECT_EQ(LinesWith(L" refused: the id that it wants is reserved: -2("), 1);
}

TEST_F(HubHello, IsRefusedAnUnknownVersion) {
  StartHub();
  for (const std::int32_t version : {0, 2, -1}) {
    RawPeer peer(pipeName_);
    TestFrame hello = Hello(5);
    hello.extra = version;
    ExpectRefusal(peer, hello, 6);
  }
  EXPECT_EQ(LinesWith(L" refused: unknown protocol version: 2("), 1);
}

TEST_F(HubHello, GrantsAServicesIdToTheHubsOwnProcess) {
  StartHub();
  RawPeer service(pipeName_);
  EXPECT_EQ(service.SayHello(0xc40000), 0xc40000);
  RawPeer least(pipeName_);
  EXPECT_EQ(least.SayHello(0x10000), 0x10000);
}

TEST_F(HubHello, RefusesAServicesIdToAnotherProcess) {
  StartHub();
  EXPECT_EQ(StatusForForeignHello(pipeName_, 0xc40000), 5);
  EXPECT_EQ(StatusForForeignHello(pipeName_, 0x10000), 5);
  EXPECT_EQ(StatusForForeignHello(pipeName_, INT32_MAX), 5);
  EXPECT_EQ(StatusForForeignHello(pipeName_, 0xffff), 0);
}

TEST_F(HubHello, IsTheOnlyFirstFrameThereCanBe) {
  StartHub();
  for (const TestFrame& first : {TestFrame{.code = 2, .extra = 1}, TestFrame{.receiver = 5, .code = 1, .extra = 1},
                                 TestFrame{.code = 1, .status = 1, .extra = 1}}) {
    RawPeer peer(pipeName_);
    peer.Send(first);
    EXPECT_FALSE(peer.Receive());
    EXPECT_TRUE(peer.IsClosed());
  }
  EXPECT_EQ(LinesWith(L" closed: its first frame is not a hello(IPCMessageHub::CutOff)"), 3);
}

TEST_F(HubHello, SaidTwiceEndsTheConnection) {
  StartHub();
  RawPeer peer(pipeName_);
  ASSERT_EQ(peer.SayHello(5), 5);
  peer.Send(Hello(5));
  EXPECT_FALSE(peer.Receive());
  EXPECT_TRUE(peer.IsClosed());
  EXPECT_EQ(LinesWith(L", client 5 closed: it said hello twice("), 1);
}

}  // namespace
