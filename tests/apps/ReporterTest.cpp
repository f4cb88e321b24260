// How outcomes are printed and what exit status each has.
#include "apps/marnockctl/Reporter.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using KT::CallStatus;
using KT::ExitStatus;
using Outcome = KT::CallOutcome<KT::PeerSumSetResponse>;

class Reporting : public ::testing::Test {
 protected:
  ExitStatus Change(const Outcome& outcome, bool json = false) {
    out.str("");
    err.str("");
    return KT::Reporter(out, err, json).Change(outcome);
  }

  static Outcome Answered(int result) {
    Outcome outcome;
    outcome.status = CallStatus::Answered;
    outcome.response.result = result;
    return outcome;
  }

  static Outcome Failed(CallStatus status, IpcStatus ipcStatus = IpcStatus::Answer) {
    Outcome outcome;
    outcome.status = status;
    outcome.ipcStatus = ipcStatus;
    outcome.explanation = "why";
    return outcome;
  }

  std::ostringstream out;
  std::ostringstream err;
};

TEST_F(Reporting, AChangeIsDone) {
  EXPECT_EQ(Change(Answered(0)), ExitStatus::Done);
  EXPECT_EQ(out.str(), "done\n");
  EXPECT_EQ(Change(Answered(0), true), ExitStatus::Done);
  EXPECT_EQ(out.str(), "{\"result\":0}\n");
  EXPECT_EQ(err.str(), "");
}

TEST_F(Reporting, AFailureCodeOfTheServiceIsExplained) {
  EXPECT_EQ(Change(Answered(-4996)), ExitStatus::ServiceFailed);
  EXPECT_EQ(err.str(),
            "marnockctl: the service answered -4996: a read failed, or a change to the peers; its log says why\n");
  EXPECT_EQ(Change(Answered(-4999)), ExitStatus::ServiceFailed);
  EXPECT_EQ(err.str(), "marnockctl: the service answered -4999: a change to a device table failed; its log says why\n");
  EXPECT_EQ(Change(Answered(7)), ExitStatus::ServiceFailed);
  EXPECT_EQ(err.str(), "marnockctl: the service answered 7: a code that this tool does not know; its log says why\n");
  EXPECT_EQ(out.str(), "");
}

TEST_F(Reporting, AFailureCodeIsInTheJsonToo) {
  EXPECT_EQ(Change(Answered(-4999), true), ExitStatus::ServiceFailed);
  EXPECT_EQ(out.str(), "{\"result\":-4999}\n");
  EXPECT_EQ(err.str(), "marnockctl: the service answered -4999: a change to a device table failed; its log says why\n");
}

TEST_F(Reporting, EveryOtherEndOfACallHasItsStatus) {
  EXPECT_EQ(Change(Failed(CallStatus::RequestTooLarge)), ExitStatus::WrongUse);
  EXPECT_EQ(Change(Failed(CallStatus::NoService)), ExitStatus::NoAnswer);
  EXPECT_EQ(Change(Failed(CallStatus::TimedOut)), ExitStatus::NoAnswer);
  EXPECT_EQ(Change(Failed(CallStatus::ConnectionLost)), ExitStatus::NoAnswer);
  EXPECT_EQ(Change(Failed(CallStatus::UnreadableAnswer)), ExitStatus::ServiceFailed);
  EXPECT_EQ(Change(Failed(CallStatus::Refused, IpcStatus::NoSuchReceiver)), ExitStatus::NoAnswer);
  EXPECT_EQ(Change(Failed(CallStatus::Refused, IpcStatus::NoCallback)), ExitStatus::NoAnswer);
  EXPECT_EQ(Change(Failed(CallStatus::Refused, IpcStatus::UnsendableAnswer)), ExitStatus::ServiceFailed);
  EXPECT_EQ(err.str(), "marnockctl: why\n");
  EXPECT_EQ(out.str(), "");
}

TEST_F(Reporting, EveryReasonAgainstTheInputIsTold) {
  KT::Reporter reporter(out, err, false);
  EXPECT_TRUE(reporter.Acceptable({std::nullopt, std::nullopt}));
  EXPECT_EQ(err.str(), "");
  EXPECT_FALSE(reporter.Acceptable({std::nullopt, "one", "two"}));
  EXPECT_EQ(err.str(), "marnockctl: one\nmarnockctl: two\n");
}

}  // namespace
