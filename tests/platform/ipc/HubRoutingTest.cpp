// The way of a frame from one connection to another.
#include "tests/platform/ipc/IpcTest.h"

namespace {

class HubRouting : public IpcTest {
 protected:
  HubRouting() {
    StartHub();
    one_ = std::make_unique<RawPeer>(pipeName_);
    two_ = std::make_unique<RawPeer>(pipeName_);
    EXPECT_EQ(one_->SayHello(1), 1);
    EXPECT_EQ(two_->SayHello(2), 2);
  }

  // The connection of `peer`, whose id is `id`, works.
  static void ExpectAlive(RawPeer& peer, std::int32_t id) {
    const TestFrame frame{.receiver = id, .sender = id, .code = 1'000, .payload = "alive"};
    peer.Send(frame);
    EXPECT_EQ(peer.Receive(), frame);
  }

  std::unique_ptr<RawPeer> one_;
  std::unique_ptr<RawPeer> two_;
};

TEST_F(HubRouting, DeliversEveryFieldAsItCame) {
  const TestFrame frame{.receiver = 2,
                        .sender = 1,
                        .code = 0x01020304,
                        .replyCode = 0x05060708,
                        .name = "name \xc3\xa9",
                        .payload = std::string("pay\0load", 8)};
  one_->Send(frame);
  EXPECT_EQ(two_->Receive(), frame);
}

TEST_F(HubRouting, DeliversUnusualValuesOfUnusedFieldsUnchanged) {
  const TestFrame frame{.receiver = 2, .sender = 1, .code = 8, .session = 7, .isLast = 0, .extra = 9};
  one_->Send(frame);
  EXPECT_EQ(two_->Receive(), frame);
}

TEST_F(HubRouting, PutsTheRealSenderInPlaceOfAForgedOne) {
  one_->Send({.receiver = 2, .sender = 0xc40000, .code = 8});
  EXPECT_EQ(two_->Receive(), (TestFrame{.receiver = 2, .sender = 1, .code = 8}));
}

TEST_F(HubRouting, DeliversToTheSenderItself) {
  const TestFrame frame{.receiver = 1, .sender = 1, .code = 8, .payload = "me"};
  one_->Send(frame);
  EXPECT_EQ(one_->Receive(), frame);
}

TEST_F(HubRouting, KeepsTheOrder) {
  std::string bytes;
  for (int i = 0; i < 500; ++i) {
    bytes += TestFrame{.receiver = 2, .code = i}.Bytes();
  }
  one_->Write(bytes);
  for (int i = 0; i < 500; ++i) {
    ASSERT_EQ(two_->Receive(), (TestFrame{.receiver = 2, .sender = 1, .code = i}));
  }
}

TEST_F(HubRouting, DeliversTheLargestFrame) {
  const TestFrame frame{.receiver = 2, .sender = 1, .code = 8, .payload = std::string(65'505, 'x')};
  one_->Send(frame);
  EXPECT_EQ(two_->Receive(), frame);
}

TEST_F(HubRouting, DeliversAFrameThatCameByteByByte) {
  const TestFrame frame{.receiver = 2, .sender = 1, .code = 8, .name = "n", .payload = "slow"};
  for (const char byte : frame.Bytes()) {
    ASSERT_EQ(one_->Write(std::string(1, byte)), 1U);
  }
  EXPECT_EQ(two_->Receive(), frame);
}

TEST_F(HubRouting, DeliversAFrameWhoseCodeIsMinusOne) {
  const TestFrame frame{.receiver = 2, .sender = 1, .code = -1, .payload = "nobody waits"};
  one_->Send(frame);
  EXPECT_EQ(two_->Receive(), frame);
}

TEST_F(HubRouting, TellsThatThereIsNoReceiver) {
  one_->Send({.receiver = 3, .code = 8, .replyCode = 42, .name = "n", .payload = "p"});
  EXPECT_EQ(one_->Receive(), Status(1, 0, 42, 1));
}

TEST_F(HubRouting, TellsThatAReceiverHasGone) {
  two_->Close();
  EXPECT_TRUE(Eventually([&] {
    one_->Send({.receiver = 2, .code = 8, .replyCode = 42});
    return one_->Receive(std::chrono::milliseconds(20)) == Status(1, 0, 42, 1);
  }));
}

TEST_F(HubRouting, TellsThatTheHubHasNoCallbacks) {
  one_->Send({.receiver = 0, .code = 8, .replyCode = 42});
  EXPECT_EQ(one_->Receive(), Status(1, 0, 42, 2));
}

TEST_F(HubRouting, TellsNothingToASenderThatExpectsNoAnswer) {
  one_->Send({.receiver = 3, .code = 8});
  one_->Send({.receiver = 0, .code = 8});
  ExpectAlive(*one_, 1);  // whose frame is the next that comes
}

TEST_F(HubRouting, NeverAnswersAStatus) {
  one_->Send({.receiver = 3, .code = 8, .replyCode = 42, .status = 2});
  one_->Send({.receiver = 0, .code = 8, .replyCode = 42, .status = 3});
  ExpectAlive(*one_, 1);
}

TEST_F(HubRouting, DeliversTheStatusesThatReceiversMake) {
  for (const std::int32_t status : {2, 3}) {
    one_->Send(Status(2, -1, 42, status));
    EXPECT_EQ(two_->Receive(), Status(2, 1, 42, status));
  }
}

TEST_F(HubRouting, DoesNotWaitForAClientThatReadsNothing) {
  for (int i = 0; i < 8; ++i) {
    one_->Send({.receiver = 2, .code = 8, .payload = std::string(65'000, 'x')});
  }
  ExpectAlive(*one_, 1);
}

struct BadFrame {
  const char* what;
  std::string bytes;
  const wchar_t* line;
};

class HubBadFrame : public HubRouting, public ::testing::WithParamInterface<BadFrame> {};

TEST_P(HubBadFrame, CostsItsSenderTheConnectionAndNobodyElseAnything) {
  one_->Write(GetParam().bytes + TestFrame{.receiver = 2, .code = 8}.Bytes());
  EXPECT_TRUE(one_->IsClosed());
  EXPECT_EQ(LinesWith(std::wstring(L", client 1 closed: ") + GetParam().line + L"(IPCMessageHub::CutOff)"), 1);
  EXPECT_EQ(LinesWith(L"IPC connection of process "), 1);
  ExpectAlive(*two_, 2);
}

const TestFrame kGood{.receiver = 2, .code = 8, .replyCode = 42};
const wchar_t* const kLength = L"the length of a frame is out of range";
const wchar_t* const kStatus = L"a frame of it has a status that only the library may send";

TestFrame WithStatus(std::int32_t status, const std::string& payload = {}) {
  TestFrame frame = kGood;
  frame.status = status;
  frame.payload = payload;
  return frame;
}

INSTANTIATE_TEST_SUITE_P(
    Every, HubBadFrame,
    ::testing::Values(
        BadFrame{"Length0", kGood.Bytes(0, 0), kLength}, BadFrame{"Length30", kGood.Bytes(30, 0), kLength},
        BadFrame{"Length65537", kGood.Bytes(65'537, 0), kLength},
        BadFrame{"LengthMax", kGood.Bytes(0xffffffff, 0), kLength},
        BadFrame{"NameBeyondTheFrame", kGood.Bytes(31, 1), L"the name of a frame is longer than the frame"},
        BadFrame{"NameNotUtf8", TestFrame{.receiver = 2, .name = "\xff"}.Bytes(), L"the name of a frame is not UTF-8"},
        BadFrame{"IsLast2", TestFrame{.receiver = 2, .isLast = 2}.Bytes(),
                 L"the isLast byte of a frame is neither 0 nor 1"},
        BadFrame{"Status1", WithStatus(1).Bytes(), kStatus}, BadFrame{"Status4", WithStatus(4).Bytes(), kStatus},
        BadFrame{"Status5", WithStatus(5).Bytes(), kStatus}, BadFrame{"Status6", WithStatus(6).Bytes(), kStatus},
        BadFrame{"Status7", WithStatus(7).Bytes(), kStatus}, BadFrame{"StatusMinus1", WithStatus(-1).Bytes(), kStatus},
        BadFrame{"Status2WithPayload", WithStatus(2, "p").Bytes(), kStatus},
        BadFrame{"Status3WithPayload", WithStatus(3, "p").Bytes(), kStatus}),
    [](const ::testing::TestParamInfo<BadFrame>& test) { return std::string(test.param.what); });

TEST_F(HubRouting, AFrameCutAnywhereCostsItsSenderOneLine) {
  const std::string frame = TestFrame{.receiver = 2, .code = 8, .name = "ab", .payload = "cd"}.Bytes();
  for (std::size_t size = 1; size < frame.size(); ++size) {
    RawPeer peer(pipeName_);
    ASSERT_NE(peer.SayHello(), -1);
    peer.Write(frame.substr(0, size));
    peer.Close();
    const int expected = static_cast<int>(size);
    ASSERT_TRUE(Eventually([&] { return LinesWith(L" closed: it ended inside a frame(") == expected; })) << size;
  }
  ExpectAlive(*two_, 2);
}

TEST_F(HubRouting, AnOrderlyEndOfAConnectionIsNotLogged) {
  two_->Close();
  EXPECT_TRUE(Eventually([&] {  // until the hub has noticed
    one_->Send({.receiver = 2, .code = 8, .replyCode = 42});
    return one_->Receive(std::chrono::milliseconds(20)) == Status(1, 0, 42, 1);
  }));
  EXPECT_EQ(LinesWith(L""), 0);
}

}  // namespace
