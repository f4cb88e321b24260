// Every text of every handler, word for word.
#include <gtest/gtest.h>

#include <new>
#include <ostream>

#include "tests/service/ServiceFixture.h"
#include "tests/support/AllocationFaults.h"

namespace {

using Lines = std::vector<std::string>;

struct HandlerTexts {
  int code;
  const char* function;
  const char* received;
  const char* payloadMissing;
  const char* requestParcel;
  const char* replyParcel;
  const char* postFailed;
  std::string result;  // for a request whose strings are all empty, on an empty store
};

std::ostream& operator<<(std::ostream& out, const HandlerTexts& texts) { return out << texts.function; }

const char* const kDeviceRequestParcel = "[KTData] Deserialize zentap device make shared failed.";
const char* const kDeviceReplyParcel = "[KTData] Serialize zentap device make shared failed.";
const char* const kListRequestParcel = "[KTData] Deserialize zentap device list make shared failed.";
const char* const kListReplyParcel = "[KTData] Serialize zentap device list make shared failed.";
const char* const kPeerRequestParcel = "[KTData] Deserialize peer device make shared failed.";
const char* const kPeerReplyParcel = "[KTData] Serialize peer device make shared failed.";

const HandlerTexts kHandlers[] = {
    {0xc40001, "KT::Marnock::SetTrustedZentapDeviceInfo",
     "[KTData] Received the request event of setting zentap device.", "[KTData] Set zentap device message is null.",
     kDeviceRequestParcel, kDeviceReplyParcel, "[KTData] Set zentap device ipc msg failed.",
     "[KTData] pkgName:, sumId:, result:0"},
    {0xc40002, "KT::Marnock::GetTrustedZentapDeviceInfo",
     "[KTData] Received the request event of getting zentap device.", "[KTData] Zentap device message is null.",
     kDeviceRequestParcel, kDeviceReplyParcel, "[KTData] Get zentap device ipc msg failed.",
     "[KTData] pkgName:, sumId:, result:0"},
    {0xc40003, "KT::Marnock::GetTrustedZentapDeviceInfoList",
     "[KTData] Received the request event of getting zentap device list.",
     "[KTData] Zentap device list message is null.", kListRequestParcel, kListReplyParcel,
     "[KTData] Get zentap device list ipc msg failed.", "[KTData] pkgName:, result:0"},
    {0xc40004, "KT::Marnock::DeleteTrustedZentapDeviceInfo",
     "[KTData] Received the request event of deleting zentap device.", "[KTData] Delete zentap device message is null.",
     kDeviceRequestParcel, kDeviceReplyParcel, "[KTData] Delete zentap device ipc msg failed.",
     "[KTData] pkgName:, sumId:, result:0"},
    {0xc40005, "KT::Marnock::SetCurrZentapDeviceInfo",
     "[KTData] Received the request event of setting curr zentap device.",
     "[KTData] Set zentap device message is null.", kDeviceRequestParcel, kDeviceReplyParcel,
     "[KTData] Set zentap device ipc msg failed.", "[KTData] pkgName:, sumId:, result:0"},
    {0xc40006, "KT::Marnock::GetCurrZentapDeviceInfo",
     "[KTData] Received the request event of getting curr zentap device.", "[KTData] Zentap device message is null.",
     kDeviceRequestParcel, kDeviceReplyParcel, "[KTData] Get zentap device ipc msg failed.",
     "[KTData] pkgName:, sumId:, result:0"},
    {0xc40007, "KT::Marnock::GetCurrZentapDeviceInfoList",
     "[KTData] Received the request event of getting curr zentap device list.",
     "[KTData] Zentap device list message is null.", kListRequestParcel, kListReplyParcel,
     "[KTData] Get zentap device list ipc msg failed.", "[KTData] pkgName:, result:0"},
    {0xc40008, "KT::Marnock::DeleteCurrZentapDeviceInfo",
     "[KTData] Received the request event of deleting curr zentap device.",
     "[KTData] Delete zentap device message is null.", kDeviceRequestParcel, kDeviceReplyParcel,
     "[KTData] Delete zentap device ipc msg failed.", "[KTData] pkgName:, sumId:, result:0"},
    {0xc40009, "KT::Marnock::SetPeerDevice", "[KTData] Received the request event of setting peer device.",
     "[KTData] Set peer device message is null.", kPeerRequestParcel, kPeerReplyParcel,
     "[KTData] Set peer device ipc msg failed.", "[KTData] udId:, result:0"},
    {0xc4000a, "KT::Marnock::GetPeerDevice", "[KTData] Received the request event of getting peer device.",
     "[KTData] Get peer device message is null.", kPeerRequestParcel, kPeerReplyParcel,
     "[KTData] Get peer device ipc msg failed.", "[KTData] udId:, sumId:, result:0"},
    {0xc4000b, "KT::Marnock::DeletePeerDevice", "[KTData] Received the request event of deleting peer device.",
     "[KTData] Delete peer device message is null.", kPeerRequestParcel, kPeerReplyParcel,
     "[KTData] Delete peer device ipc msg failed.", "[KTData] udId:, result:0"},
};

class HandlerTextsOf : public support::ServiceFixture, public ::testing::WithParamInterface<HandlerTexts> {
 protected:
  std::string Line(int level, const std::string& text) const {
    return std::to_string(level) + " " + text + "(" + GetParam().function + ")";
  }

  bool Logged(const std::string& line) {
    const Lines lines = log.Lines();
    return std::find(lines.begin(), lines.end(), line) != lines.end();
  }

  // Delivers a request of empty strings once for each allocation that the handler makes, each time with that one
  // failing, until `line` was logged. Returns whether it was. A healthy request before each puts in order what the last
  // failure left on the disk, which would change the number of allocations.
  bool LoggedWhenMemoryRunsOut(const std::string& line, std::size_t expectedReplies) {
    for (int nth = 1; nth < 2'000; ++nth) {
      Deliver(GetParam().code, std::string(2, '\0'));
      ipc.posted.clear();
      log.Take();
      std::string payload("\0\0", 2);
      TagIPCMessageItem item;
      item.code = GetParam().code;
      item.length = 2;
      item.payload = payload.data();
      try {
        const support::AllocationFault fault(nth);
        support::Deliver(item);
      } catch (const std::bad_alloc&) {
      }
      if (Logged(line)) {
        EXPECT_EQ(ipc.posted.size(), expectedReplies);
        return true;
      }
    }
    return false;
  }
};

TEST_P(HandlerTextsOf, LogsAMissingPayloadAndSendsNoReply) {
  Deliver(GetParam().code, "");
  EXPECT_EQ(log.Take(), (Lines{Line(3, GetParam().received), Line(4, GetParam().payloadMissing)}));
  TagIPCMessageItem item;
  item.code = GetParam().code;
  item.length = 5;
  item.payload = nullptr;
  support::Deliver(item);
  EXPECT_EQ(log.Take(), (Lines{Line(3, GetParam().received), Line(4, GetParam().payloadMissing)}));
  char byte = 0;
  item.length = -1;
  item.payload = &byte;
  support::Deliver(item);
  EXPECT_EQ(log.Take(), (Lines{Line(3, GetParam().received), Line(4, GetParam().payloadMissing)}));
  EXPECT_TRUE(ipc.posted.empty());
}

TEST_P(HandlerTextsOf, LogsArrivalFirstAndTheResultLast) {
  Deliver(GetParam().code, std::string(1'000, '\0'));
  const Lines lines = log.Take();
  ASSERT_GE(lines.size(), 2U);
  EXPECT_EQ(lines.front(), Line(3, GetParam().received));
  EXPECT_EQ(lines.back(), Line(3, GetParam().result));
  EXPECT_EQ(ipc.posted.size(), 1U);
}

TEST_P(HandlerTextsOf, LogsAFailedPostAndDoesNotRetry) {
  ipc.postSucceeds = false;
  Deliver(GetParam().code, std::string(1'000, '\0'));
  const Lines lines = log.Take();
  ASSERT_GE(lines.size(), 2U);
  EXPECT_EQ(lines.back(), Line(4, GetParam().postFailed));
  EXPECT_EQ(lines[lines.size() - 2], Line(3, GetParam().result));
  EXPECT_EQ(ipc.posted.size(), 1U);
}

TEST_P(HandlerTextsOf, LogsARequestParcelThatCannotBeMadeAndSendsNoReply) {
  EXPECT_TRUE(LoggedWhenMemoryRunsOut(Line(4, GetParam().requestParcel), 0));
}

TEST_P(HandlerTextsOf, LogsAReplyParcelThatCannotBeMadeAndSendsNoReply) {
  EXPECT_TRUE(LoggedWhenMemoryRunsOut(Line(4, GetParam().replyParcel), 0));
}

INSTANTIATE_TEST_SUITE_P(Eleven, HandlerTextsOf, ::testing::ValuesIn(kHandlers));

}  // namespace
