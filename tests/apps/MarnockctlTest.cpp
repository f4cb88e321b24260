// marnockctl from its arguments to its exit status, against a service that answers as the test says.
#include <gtest/gtest.h>

#include <sstream>

#include "apps/marnockctl/Commands.h"
#include "codec/messages/EncodedSize.h"
#include "tests/apps/TemporaryFile.h"
#include "tests/client/ClientFixture.h"

namespace {

using KT::ExitStatus;
using namespace std::string_literals;

const std::string kZero("\0\0\0\0", 4);
const std::string kMinus4996("\x7c\xec\xff\xff", 4);
const std::string kMinus4999("\x79\xec\xff\xff", 4);

// A trusted record with that name and default values besides.
std::string TrustedRecord(const std::string& devName) {
  const std::string empty(2, '\0');
  const std::string name = std::string(1, static_cast<char>(devName.size())) + '\0' + devName;
  const std::string one("\1\0\0\0", 4);
  const std::string minusOne(4, '\xff');
  return kZero + kZero + empty + empty + name + empty + empty + empty + kZero + kZero + kZero + one + one + one +
         kZero + empty + empty + kZero + kZero + std::string("\2\0\0\0", 4) + minusOne + minusOne + kZero + empty +
         kZero;
}

std::string CurrentRecord(const std::string& devName) {
  std::string record = TrustedRecord(devName);
  record.resize(record.size() - 4);  // isSupportPlenix is not given back
  for (int i = 0; i < 7; ++i) {
    record += kZero;
  }
  return record + std::string(2, '\0');
}

class Marnockctl : public support::ClientFixture {
 protected:
  ExitStatus Tool(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "marnockctl");
    std::ostringstream outStream;
    std::ostringstream errStream;
    const ExitStatus status = KT::RunMarnockctl(std::move(arguments), outStream, errStream, pipeName);
    out = outStream.str();
    err = errStream.str();
    return status;
  }

  void Serve(int code, std::string payload) {
    if (hub == nullptr) {
      StartHub();
    }
    StartService(code, With(std::move(payload)));
  }

  std::string out;
  std::string err;
};

TEST_F(Marnockctl, SetsATrustedDevice) {
  Serve(0xc40001, "\x03\0pkg"s + kZero);
  EXPECT_EQ(Tool({"--pkg", "pkg", "trusted", "set", "key", "--field", "devName=N"}), ExitStatus::Done);
  EXPECT_EQ(out, "done\n");
  EXPECT_EQ(err, "");
  ASSERT_EQ(Requests().size(), 1U);
  EXPECT_EQ(Requests()[0].payload, "\x03\0pkg\x03\0key"s + TrustedRecord("N"));
}

TEST_F(Marnockctl, SetsADeviceFromAFile) {
  Serve(0xc40001, "\x0a\0marnockctl"s + kZero);
  const support::TemporaryFile file(R"({"devName": "F"})");
  EXPECT_EQ(Tool({"trusted", "set", "key", file.Path()}), ExitStatus::Done);
  EXPECT_EQ(Requests().at(0).payload, "\x0a\0marnockctl\x03\0key"s + TrustedRecord("F"));
}

TEST_F(Marnockctl, GetsATrustedDevice) {
  Serve(0xc40002, "\x03\0pkg"s + kZero + TrustedRecord("N"));
  EXPECT_EQ(Tool({"--pkg", "pkg", "trusted", "get", "key"}), ExitStatus::Done);
  EXPECT_NE(out.find("devName            N\n"), std::string::npos) << out;
  EXPECT_EQ(out.back(), '\n');
  EXPECT_EQ(Tool({"--json", "trusted", "get", "k\xff"}), ExitStatus::Done);
  EXPECT_EQ(out.find(R"({"result":0,"sumId":{"hex":"6bff"},"device":{"devType":0,)"), 0U) << out;
  EXPECT_EQ(err, "");
}

TEST_F(Marnockctl, SaysThatADeviceWasNotFound) {
  Serve(0xc40002, "\x03\0pkg"s + kZero + TrustedRecord(""));
  EXPECT_EQ(Tool({"--json", "trusted", "get", "k\n"}), ExitStatus::NotFound);
  EXPECT_EQ(out, "");
  EXPECT_EQ(err, "marnockctl: no trusted device has the sumId \"k\\x0a\"\n");
  Serve(0xc40006, "\x03\0pkg"s + kZero + CurrentRecord(""));
  EXPECT_EQ(Tool({"current", "get", "k"}), ExitStatus::NotFound);
  EXPECT_EQ(err, "marnockctl: no current device has the sumId \"k\"\n");
}

TEST_F(Marnockctl, ListsDevices) {
  Serve(0xc40003, "\x03\0pkg\2\0\0\0"s + TrustedRecord("A") + TrustedRecord("B") + kZero);
  EXPECT_EQ(Tool({"trusted", "list"}), ExitStatus::Done);
  EXPECT_EQ(out, "devName\nA\nB\n2 trusted devices\n");
  Serve(0xc40007, "\x03\0pkg\1\0\0\0"s + CurrentRecord("C") + kZero);
  EXPECT_EQ(Tool({"current", "list"}), ExitStatus::Done);
  EXPECT_EQ(out, "devName\nC\n1 current device\n");
  EXPECT_EQ(Tool({"--json", "current", "list"}), ExitStatus::Done);
  EXPECT_EQ(out.find(R"({"result":0,"devices":[{"devType":0,)"), 0U) << out;
}

TEST_F(Marnockctl, ListsNothing) {
  Serve(0xc40003, "\x03\0pkg"s + kZero + kZero);
  EXPECT_EQ(Tool({"trusted", "list"}), ExitStatus::Done);
  EXPECT_EQ(out, "0 trusted devices\n");
  EXPECT_EQ(Tool({"--json", "trusted", "list"}), ExitStatus::Done);
  EXPECT_EQ(out, "{\"result\":0,\"devices\":[]}\n");
}

TEST_F(Marnockctl, DeletesDevices) {
  Serve(0xc40004, kZero);
  Serve(0xc40008, kZero);
  EXPECT_EQ(Tool({"--pkg", "p", "trusted", "delete", "k"}), ExitStatus::Done);
  EXPECT_EQ(Tool({"--pkg", "p", "--json", "current", "delete", "k"}), ExitStatus::Done);
  EXPECT_EQ(out, "{\"result\":0}\n");
  ASSERT_EQ(Requests().size(), 2U);
  EXPECT_EQ(Requests()[0].code, 0xc40004);
  EXPECT_EQ(Requests()[0].payload, "\1\0p\1\0k"s);
  EXPECT_EQ(Requests()[1].code, 0xc40008);
}

TEST_F(Marnockctl, SetsGetsAndDeletesPeers) {
  Serve(0xc40009, kZero);
  Serve(0xc4000a, "\x05\0a\x1b\xffz\\"s + kZero);
  Serve(0xc4000b, kZero);
  EXPECT_EQ(Tool({"peer", "set", "u", "s"}), ExitStatus::Done);
  EXPECT_EQ(out, "done\n");
  EXPECT_EQ(Requests().back().payload, "\1\0u\1\0s"s);
  EXPECT_EQ(Tool({"peer", "get", "u"}), ExitStatus::Done);
  EXPECT_EQ(out, "a\\x1b\\xffz\\\\\n");
  EXPECT_EQ(Tool({"--json", "peer", "get", "u"}), ExitStatus::Done);
  EXPECT_EQ(out, "{\"result\":0,\"udId\":\"u\",\"sumId\":{\"hex\":\"611bff7a5c\"}}\n");
  EXPECT_EQ(Tool({"peer", "delete", "u"}), ExitStatus::Done);
  EXPECT_EQ(Requests().back().code, 0xc4000b);
}

TEST_F(Marnockctl, SaysThatAPeerWasNotFound) {
  Serve(0xc4000a, "\0\0"s + kZero);
  EXPECT_EQ(Tool({"peer", "get", "nobody"}), ExitStatus::NotFound);
  EXPECT_EQ(out, "");
  EXPECT_EQ(err, "marnockctl: no peer has the udId \"nobody\"\n");
}

std::string StatusOfAHost(int failedSaves) {
  return R"({"uptimeSeconds":59,"connections":{"now":1,"most":1,"refused":0,"cutOff":0},"framesRouted":0,)"
         R"("saves":{"peer":{"saved":3,"failedSinceLastSaved":)" +
         std::to_string(failedSaves) + R"(}},"requests":[]})";
}

TEST_F(Marnockctl, ShowsTheHostsStatus) {
  StartHub([] { return StatusOfAHost(0); });
  EXPECT_EQ(Tool({"status"}), ExitStatus::Done);
  EXPECT_EQ(out,
            "up             0d 00:00:59\n"
            "connections    1 now, 1 at most, 0 refused, 0 cut off\n"
            "frames routed  0\n"
            "\n"
            "table  saved  failed since\n"
            "peer       3             0\n"
            "\n"
            "request  received  0  -4996  -4999  unanswered\n");
  EXPECT_EQ(err, "");
  EXPECT_EQ(Tool({"--json", "status"}), ExitStatus::Done);
  EXPECT_EQ(out, StatusOfAHost(0) + "\n");
}

TEST_F(Marnockctl, WarnsOfWhatIsNotOnTheDisk) {
  StartHub([] { return StatusOfAHost(2); });
  EXPECT_EQ(Tool({"--json", "status"}), ExitStatus::Done);
  EXPECT_EQ(out, StatusOfAHost(2) + "\n");
  EXPECT_EQ(err,
            "marnockctl: changes of the peer table may not be on the disk: its last save failed; the host's log says "
            "why\n");
}

TEST_F(Marnockctl, EndsWithoutAnAnswerWhereTheHostHasNoStatusOrIsNotThere) {
  EXPECT_EQ(Tool({"status"}), ExitStatus::NoAnswer);
  StartHub();
  EXPECT_EQ(Tool({"status"}), ExitStatus::NoAnswer);
  EXPECT_EQ(out, "");
}

TEST_F(Marnockctl, DoesNotTrustTheStatusToBeWhatItShouldBe) {
  for (const char* document : {"no JSON", "{}", "[1]", "{\"uptimeSeconds\":-1}"}) {
    StartHub([document] { return std::string(document); });
    EXPECT_EQ(Tool({"status"}), ExitStatus::ServiceFailed) << document;
    EXPECT_EQ(out, "");
    EXPECT_EQ(err.find("marnockctl: the host's status cannot be read: "), 0U) << err;
    StopHub();
  }
}

TEST_F(Marnockctl, PassesOnFailuresOfTheService) {
  Serve(0xc40001, "\x03\0pkg"s + kMinus4999);
  Serve(0xc40002, "\x03\0pkg"s + kMinus4996 + TrustedRecord(""));
  Serve(0xc40003, "\x03\0pkg"s + kZero + kMinus4996);
  Serve(0xc40004, kMinus4999);
  Serve(0xc4000a, "\0\0"s + kMinus4996);
  const std::string change =
      "marnockctl: the service answered -4999: a change to a device table failed; its log says why\n";
  const std::string read =
      "marnockctl: the service answered -4996: a read failed, or a change to the peers; its log says why\n";
  EXPECT_EQ(Tool({"trusted", "set", "k", "--field", "devName=N"}), ExitStatus::ServiceFailed);
  EXPECT_EQ(err, change);
  EXPECT_EQ(Tool({"trusted", "delete", "k"}), ExitStatus::ServiceFailed);
  EXPECT_EQ(err, change);
  EXPECT_EQ(Tool({"trusted", "get", "k"}), ExitStatus::ServiceFailed);
  EXPECT_EQ(err, read);
  EXPECT_EQ(Tool({"trusted", "list"}), ExitStatus::ServiceFailed);
  EXPECT_EQ(err, read);
  EXPECT_EQ(Tool({"--json", "peer", "get", "u"}), ExitStatus::ServiceFailed);
  EXPECT_EQ(err, read);
  EXPECT_EQ(out, "{\"result\":-4996}\n");
}

TEST_F(Marnockctl, ExplainsAListThatDoesNotFitItsReply) {
  StartHub();
  const auto unsendable = [](IPCMessageClient& answering, const TagIPCMessageItem& request) {
    TagIPCMessageItem item;
    item.receiver = request.sender;
    item.code = request.replyCode;
    item.length = -1;
    answering.PostIPCMessage(item);
  };
  StartService(0xc40003, unsendable);
  StartService(0xc40007, unsendable);
  EXPECT_EQ(Tool({"trusted", "list"}), ExitStatus::ServiceFailed);
  EXPECT_EQ(err,
            "marnockctl: the list of trusted devices passes the 10240 bytes that the service's reply holds (status 3); "
            "get the devices one by one\n");
  EXPECT_EQ(Tool({"current", "list"}), ExitStatus::ServiceFailed);
  EXPECT_EQ(err,
            "marnockctl: the list of current devices passes the 4096 bytes that the service's reply holds (status 3); "
            "get the devices one by one\n");
}

TEST_F(Marnockctl, ExplainsAnUnreadableAnswer) {
  Serve(0xc40009, "\0\0\0"s);
  EXPECT_EQ(Tool({"peer", "set", "u", "s"}), ExitStatus::ServiceFailed);
  EXPECT_EQ(err, "marnockctl: the answer of 3 bytes is not the message that belongs to this request\n");
}

TEST_F(Marnockctl, SaysThatThereIsNoHub) {
  EXPECT_EQ(Tool({"peer", "get", "u"}), ExitStatus::NoAnswer);
  EXPECT_EQ(out, "");
  EXPECT_EQ(err.find("marnockctl: nothing serves the pipe \\\\.\\Pipe\\MarnockTest"), 0U) << err;
}

TEST_F(Marnockctl, SaysThatThereIsNoService) {
  StartHub();
  EXPECT_EQ(Tool({"peer", "get", "u"}), ExitStatus::NoAnswer);
  EXPECT_EQ(err, "marnockctl: the hub runs but the service is not connected to it (status 1)\n");
  StartService(0xc40001, With(""));
  EXPECT_EQ(Tool({"peer", "get", "u"}), ExitStatus::NoAnswer);
  EXPECT_EQ(err, "marnockctl: the service does not answer this request code (status 2)\n");
}

TEST_F(Marnockctl, WaitsAsLongAsItWasTold) {
  StartHub();
  StartService(0xc4000a, [](IPCMessageClient&, const TagIPCMessageItem&) {});
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(Tool({"--timeout", "150", "peer", "get", "u"}), ExitStatus::NoAnswer);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(150));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(4));
  EXPECT_EQ(err, "marnockctl: no answer in time; the service may or may not have acted\n");
}

TEST_F(Marnockctl, SendsNothingWhenTheInputIsWrong) {
  Serve(0xc40009, kZero);
  const auto complaint = [this](std::vector<std::string> arguments) {
    EXPECT_EQ(Tool(std::move(arguments)), ExitStatus::WrongUse);
    EXPECT_EQ(out, "");
    return err;
  };
  EXPECT_EQ(complaint({"peer", "get", ""}), "marnockctl: UDID is empty: an entry needs a key to be found by\n");
  EXPECT_EQ(complaint({"peer", "delete", "it's"}),
            "marnockctl: UDID holds a single quote at byte 2: the store cannot look such a key up\n");
  EXPECT_EQ(complaint({"peer", "set", "u'", ""}),
            "marnockctl: UDID holds a single quote at byte 1: the store cannot look such a key up\n"
            "marnockctl: SUMID is empty: it could not be told from a peer that is not there\n");
  EXPECT_EQ(complaint({"trusted", "delete", ""}), "marnockctl: SUMID is empty: an entry needs a key to be found by\n");
  EXPECT_EQ(complaint({"current", "get", "'"}),
            "marnockctl: SUMID holds a single quote at byte 0: the store cannot look such a key up\n");
  EXPECT_EQ(complaint({"trusted", "set", "'", "--field", "devName=N"}),
            "marnockctl: SUMID holds a single quote at byte 0: the store cannot look such a key up\n");
  EXPECT_EQ(complaint({"trusted", "set", "k"}),
            "marnockctl: no device given: name a FILE, - for standard input, or fields with --field NAME=VALUE\n");
  EXPECT_EQ(complaint({"trusted", "set", "k", "--field", "shareType=1"}),
            "marnockctl: the device holds only default values: a get could not tell it from one that is not there "
            "(--force stores it all the same)\n");
  EXPECT_TRUE(Requests().empty());
}

TEST_F(Marnockctl, RefusesAPeerThatAGetCouldNotGiveBack) {
  Serve(0xc40009, kZero);
  EXPECT_EQ(Tool({"peer", "set", "u", std::string(1018, 's')}), ExitStatus::Done);  // 2 + 1018 + 4 bytes
  EXPECT_EQ(Tool({"peer", "set", "u", std::string(1019, 's')}), ExitStatus::WrongUse);
  EXPECT_EQ(err, "marnockctl: the answer to a get would take 1025 bytes; the service's reply holds 1024\n");
  EXPECT_EQ(Requests().size(), 1U);
}

TEST_F(Marnockctl, StoresWhatAGetCouldNotGiveBackWhenForced) {
  Serve(0xc40001, "\x0a\0marnockctl"s + kZero);
  EXPECT_EQ(Tool({"trusted", "set", "k", "--field", "shareType=1", "--force"}), ExitStatus::Done);
  const std::string longName = "devName=" + std::string(2'000, 'n');
  EXPECT_EQ(Tool({"trusted", "set", "k", "--field", longName}), ExitStatus::WrongUse);
  EXPECT_EQ(Tool({"trusted", "set", "k", "--field", longName, "--force"}), ExitStatus::Done);
  EXPECT_EQ(Requests().size(), 2U);
}

TEST_F(Marnockctl, DoesNotSendARequestThatTheServiceCannotDecode) {
  Serve(0xc40001, "\x0a\0marnockctl"s + kZero);
  EXPECT_EQ(Tool({"--pkg", "p", "trusted", "set", "k", "--force", "--field", "devName=" + std::string(11'000, 'n')}),
            ExitStatus::WrongUse);
  // 3 + 3 for package and key, 82 for the record without its text, 11,000.
  EXPECT_EQ(err, "marnockctl: the request takes 11088 bytes; the service decodes at most 10240\n");
  EXPECT_TRUE(Requests().empty());
}

TEST_F(Marnockctl, SaysHowItIsUsed) {
  EXPECT_EQ(Tool({"--help"}), ExitStatus::Done);
  EXPECT_EQ(Tool({}), ExitStatus::WrongUse);
}

}  // namespace
