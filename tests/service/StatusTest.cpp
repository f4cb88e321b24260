// What a host can see of the service: counts by table and by request.
#include "codec/messages/CurrZentapMessages.h"
#include "codec/messages/PeerSumMessages.h"
#include "codec/messages/TrustedZentapMessages.h"
#include "service/ServiceStatus.h"
#include "tests/service/ServiceFixture.h"
#include "tests/support/AllocationFaults.h"

namespace {

using Lines = std::vector<std::string>;

class ServiceStatusOf : public support::ServiceFixture {
 protected:
  // As received = succeeded + -4996 + -4999 + unanswered.
  std::string Counts(int code) const {
    const KT::RequestCounts counts =
        KT::GetServiceStatus(*service).requests.at(static_cast<std::size_t>(code - 0xc40001)).counts;
    return std::to_string(counts.received) + " = " + std::to_string(counts.succeeded) + " + " +
           std::to_string(counts.readOrPeerFailed) + " + " + std::to_string(counts.tapChangeFailed) + " + " +
           std::to_string(counts.unanswered);
  }

  static std::string TrustedKey(const std::string& sumId) {
    KT::TrustedZentapDeviceDeleteRequest request;
    request.sumId = sumId;
    return Encode(request);
  }

  static std::string PeerPair(const std::string& udId) {
    KT::PeerSumSetRequest request;
    request.udId = udId;
    request.sumId = "sum";
    return Encode(request);
  }
};

TEST_F(ServiceStatusOf, AFreshServiceIsAllZero) {
  const KT::ServiceStatus status = KT::GetServiceStatus(*service);
  EXPECT_EQ(status.peer.saved + status.current.saved + status.trusted.saved, 0U);
  for (int code = 0xc40001; code <= 0xc4000b; ++code) {
    EXPECT_EQ(Counts(code), "0 = 0 + 0 + 0 + 0");
  }
}

TEST_F(ServiceStatusOf, NamesTheElevenRequestsInTheOrderOfTheirCodes) {
  Lines names;
  int code = 0xc40001;
  for (const KT::RequestStatus& request : KT::GetServiceStatus(*service).requests) {
    names.emplace_back(request.name);
    EXPECT_EQ(request.code, code++);
  }
  EXPECT_EQ(names, (Lines{"SetTrustedZentapDeviceInfo", "GetTrustedZentapDeviceInfo", "GetTrustedZentapDeviceInfoList",
                          "DeleteTrustedZentapDeviceInfo", "SetCurrZentapDeviceInfo", "GetCurrZentapDeviceInfo",
                          "GetCurrZentapDeviceInfoList", "DeleteCurrZentapDeviceInfo", "SetPeerDevice", "GetPeerDevice",
                          "DeletePeerDevice"}));
}

TEST_F(ServiceStatusOf, EachRequestIsCountedUnderItsOwnCode) {
  for (int code = 0xc40001; code <= 0xc4000b; ++code) {
    Deliver(code, std::string(1'000, '\0'));
    EXPECT_EQ(Counts(code), "1 = 1 + 0 + 0 + 0") << code;
  }
}

TEST_F(ServiceStatusOf, ResultsAreCountedByValue) {
  Deliver(0xc40004, TrustedKey("absent"));
  Deliver(0xc40004, TrustedKey("it's"));
  Deliver(0xc40004, TrustedKey("it's"));
  EXPECT_EQ(Counts(0xc40004), "3 = 1 + 0 + 2 + 0");
  Deliver(0xc40002, TrustedKey("it's"));
  EXPECT_EQ(Counts(0xc40002), "1 = 0 + 1 + 0 + 0");
  Deliver(0xc4000b, PeerPair("it's"));
  EXPECT_EQ(Counts(0xc4000b), "1 = 0 + 1 + 0 + 0");
}

TEST_F(ServiceStatusOf, ARequestWithoutAPayloadOrWithAFailedPostIsUnanswered) {
  Deliver(0xc40009, "");
  EXPECT_EQ(Counts(0xc40009), "1 = 0 + 0 + 0 + 1");
  ipc.postSucceeds = false;
  Deliver(0xc40009, PeerPair("p"));
  EXPECT_EQ(Counts(0xc40009), "2 = 0 + 0 + 0 + 2");
  EXPECT_EQ(KT::GetServiceStatus(*service).peer.saved, 1U) << "it was done all the same";
}

TEST_F(ServiceStatusOf, ARequestThatRunsOutOfMemoryAnywhereIsCountedOnce) {
  std::string payload = PeerPair("p");
  std::uint64_t requests = 0;
  for (int nth = 1; nth < 60; ++nth) {
    TagIPCMessageItem item;
    item.code = 0xc40009;
    item.length = static_cast<int>(payload.size());
    item.payload = payload.data();
    ++requests;
    try {
      const support::AllocationFault fault(nth);
      support::Deliver(item);
    } catch (const std::bad_alloc&) {
    }
    const KT::RequestCounts counts = KT::GetServiceStatus(*service).requests[8].counts;
    EXPECT_EQ(counts.received, requests);
    EXPECT_EQ(counts.succeeded + counts.readOrPeerFailed + counts.unanswered, requests) << nth;
  }
  EXPECT_GT(KT::GetServiceStatus(*service).requests[8].counts.unanswered, 0U);
}

TEST_F(ServiceStatusOf, SavesAreShownByTable) {
  Deliver(0xc40009, PeerPair("p"));
  Deliver(0xc40004, TrustedKey("s"));
  Deliver(0xc40004, TrustedKey("s"));
  std::filesystem::create_directories(profile.NativeFile("CurrentZentapDeviceInfo1G12NJ9DS39D.db"));
  Deliver(0xc40008, TrustedKey("s"));
  const KT::ServiceStatus status = KT::GetServiceStatus(*service);
  EXPECT_EQ(status.peer.saved, 1U);
  EXPECT_EQ(status.trusted.saved, 2U);
  EXPECT_EQ(status.current.saved, 0U);
  EXPECT_EQ(status.current.failedSinceLastSaved, 1U);
}

int g_unsavedChanges = 0;

TEST_F(ServiceStatusOf, AnUnsavedChangeIsToldAndAnsweredWithSuccess) {
  g_unsavedChanges = 0;
  KT::ObserveUnsavedChanges(*service, [](KT::StoreTable table, const KT::SaveCounts& saves) {
    EXPECT_EQ(table, KT::StoreTable::Peer);
    EXPECT_EQ(saves.failedSinceLastSaved, 1U);
    ++g_unsavedChanges;
  });
  std::filesystem::create_directories(profile.NativeFile("PeerDeviceInfo1G12NJ9DS39D.db"));
  Deliver(0xc40009, PeerPair("p"));
  EXPECT_EQ(g_unsavedChanges, 1);
  EXPECT_EQ(Counts(0xc40009), "1 = 1 + 0 + 0 + 0");
}

}  // namespace
