// The host's status as JSON, and what marnockctl makes of it.
#include "apps/marnock-host/StatusDocument.h"

#include <gtest/gtest.h>

#include "apps/json/JsonDocument.h"
#include "apps/marnockctl/StatusReport.h"

namespace {

// Two requests with numbers of their own; the others are all zero.
KT::ServiceStatus SampleStatus() {
  KT::ServiceStatus status;
  status.peer = {.saved = 41, .failedSinceLastSaved = 0};
  status.current = {.saved = 0, .failedSinceLastSaved = 7};
  status.trusted = {.saved = 1'000'000, .failedSinceLastSaved = 0};
  for (std::size_t i = 0; i < status.requests.size(); ++i) {
    status.requests[i] = {.code = 0xc40001 + static_cast<int>(i), .name = "Other", .counts = {}};
  }
  status.requests[0] = {0xc40001, "SetTrustedZentapDeviceInfo", {12, 9, 0, 2, 1}};
  status.requests[9] = {0xc4000a, "GetPeerDevice", {5, 3, 2, 0, 0}};
  return status;
}

const HubCounters kHub{
    .connections = 2, .mostConnections = 17, .refused = 3, .cutOff = 4, .framesRouted = 18'446'744'073'709'551'615U};

std::string Sample() { return KT::StatusDocument(std::chrono::seconds(93'784), kHub, SampleStatus()); }

TEST(StatusDocument, HoldsEveryNumberUnderItsName) {
  EXPECT_EQ(Sample().substr(0, Sample().find(",{\"code\":12845058")),
            "{\"uptimeSeconds\":93784,"
            "\"connections\":{\"now\":2,\"most\":17,\"refused\":3,\"cutOff\":4},"
            "\"framesRouted\":18446744073709551615,"
            "\"saves\":{\"trusted\":{\"saved\":1000000,\"failedSinceLastSaved\":0},"
            "\"current\":{\"saved\":0,\"failedSinceLastSaved\":7},"
            "\"peer\":{\"saved\":41,\"failedSinceLastSaved\":0}},"
            "\"requests\":[{\"code\":12845057,\"name\":\"SetTrustedZentapDeviceInfo\",\"received\":12,"
            "\"results\":{\"0\":9,\"-4996\":0,\"-4999\":2},\"unanswered\":1}");
  EXPECT_NE(Sample().find("{\"code\":12845066,\"name\":\"GetPeerDevice\",\"received\":5,"
                          "\"results\":{\"0\":3,\"-4996\":2,\"-4999\":0},\"unanswered\":0}"),
            std::string::npos);
  EXPECT_EQ(KT::ParseJson(Sample()).at("requests").size(), 11U);
}

TEST(StatusDocument, FitsAFrameWithTheLargestNumbers) {
  const HubCounters hub{UINT64_MAX, UINT64_MAX, UINT64_MAX, UINT64_MAX, UINT64_MAX};
  KT::ServiceStatus status = SampleStatus();
  status.peer = status.current = status.trusted = {UINT64_MAX, UINT64_MAX};
  for (KT::RequestStatus& request : status.requests) {
    request.counts = {UINT64_MAX, UINT64_MAX, UINT64_MAX, UINT64_MAX, UINT64_MAX};
  }
  EXPECT_LT(KT::StatusDocument(std::chrono::seconds::max(), hub, status).size(), 8'000U);
}

TEST(StatusReport, ShowsTheDocumentAsTables) {
  KT::Json document = KT::ParseJson(Sample());
  document["requests"] = KT::Json::array({document["requests"][0], document["requests"][9]});
  const KT::StatusReport report = KT::ReportStatus(document);
  EXPECT_EQ(report.text,
            "up             1d 02:03:04\n"
            "connections    2 now, 17 at most, 3 refused, 4 cut off\n"
            "frames routed  18446744073709551615\n"
            "\n"
            "table      saved  failed since\n"
            "trusted  1000000             0\n"
            "current        0             7\n"
            "peer          41             0\n"
            "\n"
            "request                     received  0  -4996  -4999  unanswered\n"
            "SetTrustedZentapDeviceInfo        12  9      0      2           1\n"
            "GetPeerDevice                      5  3      2      0           0");
}

TEST(StatusReport, WarnsOfEachTableWhoseLastSaveFailed) {
  EXPECT_EQ(KT::ReportStatus(KT::ParseJson(Sample())).warnings,
            (std::vector<std::string>{"changes of the current table may not be on the disk: its last save failed; the "
                                      "host's log says why"}));
}

TEST(StatusReport, LeavesMembersAloneThatItDoesNotKnow) {
  KT::Json document = KT::ParseJson(Sample());
  const std::string text = KT::ReportStatus(document).text;
  document["fromALaterHost"] = true;
  EXPECT_EQ(KT::ReportStatus(document).text, text);
}

TEST(StatusReport, RefusesADocumentThatLacksAMember) {
  for (const char* member : {"uptimeSeconds", "connections", "framesRouted", "saves", "requests"}) {
    KT::Json document = KT::ParseJson(Sample());
    document.erase(member);
    EXPECT_THROW(KT::ReportStatus(document), std::exception) << member;
    document[member] = "text";
    EXPECT_THROW(KT::ReportStatus(document), std::exception) << member;
  }
}

TEST(StatusReport, RefusesACountThatIsNone) {
  for (const char* number : {"-1", "1.5", "9e61", "18446744073709551616", "true"}) {
    KT::Json document = KT::ParseJson(Sample());
    document["framesRouted"] = KT::ParseJson(number);
    try {
      KT::ReportStatus(document);
      ADD_FAILURE() << number;
    } catch (const std::runtime_error& refusal) {
      EXPECT_STREQ(refusal.what(), "\"framesRouted\" is not a whole number of 0 or more");
    }
  }
}

}  // namespace
