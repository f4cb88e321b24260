// The eleven requests, driven through the handlers while anything fails.
#include <algorithm>
#include <new>
#include <optional>

#include "tests/faults/RequestCases.h"
#include "tests/faults/RestartedHost.h"
#include "tests/faults/Sweep.h"
#include "tests/service/ServiceFixture.h"

namespace {

using faults::Outcome;
using faults::Purpose;
using faults::RequestCase;
using faults::Round;
using Lines = std::vector<std::string>;

bool HasLine(const Lines& lines, const std::string& start) {
  return std::any_of(lines.begin(), lines.end(), [&](const std::string& line) { return line.starts_with(start); });
}

class RequestSweep : public support::ServiceFixture, public testing::WithParamInterface<RequestCase> {
 protected:
  RequestSweep() {
    Stop();
    injector_.emplace(system);
    Start();
  }
  ~RequestSweep() override {
    Stop();
    injector_.reset();
  }

  // The row is there with a value of this round, in memory and on the disk.
  void Prepare() {
    old_ = "a value that is no short string " + std::to_string(++rounds_);
    EXPECT_EQ(Result(Send(faults::RequestCaseOf(request_.setCode).payload(old_), request_.setCode)), 0);
    payload_ = request_.payload(old_ + " changed");
    ipc.posted.clear();
    ipc.posted.reserve(2);
    log.Take();
    item_ = {};
    item_.code = request_.code;
    item_.replyCode = 42;
    item_.length = static_cast<int>(payload_.size());
    item_.payload = payload_.data();
  }

  // As the IPC library calls it: a handler that runs out of memory may throw, and costs one answer.
  void Run() {
    try {
      support::Deliver(item_);
    } catch (const std::bad_alloc&) {
    }
  }

  Outcome Check(const Round& round) {
    const Lines lines = log.Take();
    const std::optional<int> result = TakenResult(round);
    CheckMemory(result);
    CheckDisk(result, lines);
    if (result == request_.failureResult) {
      const std::string line = std::string("4 ") + request_.failure + "(KT::DevicePersistence::" + request_.name + ")";
      EXPECT_TRUE(HasLine(lines, line) || round.MayLoseLogLines()) << testing::PrintToString(lines);
    }
    CheckThatItWorksAgain();
    return result == 0 && !HasLine(lines, kSaveFailed) ? Outcome::Survived : Outcome::Failed;
  }

  const RequestCase& request_ = GetParam();
  std::optional<faults::FaultInjector> injector_;

 private:
  static constexpr const char* kSaveFailed = "4 [KTData] Save database filed:";

  std::string Send(std::string payload, int code) {
    ipc.posted.clear();
    Deliver(code, std::move(payload));
    EXPECT_EQ(ipc.posted.size(), 1U);
    return ipc.posted.empty() ? "" : ipc.posted[0].payload;
  }

  // Of an answer to a Set, which is the same number in all of them.
  int Result(const std::string& reply) { return faults::RequestCaseOf(request_.setCode).result(reply); }

  // The one answer's result. None at all only where there was no memory for it.
  std::optional<int> TakenResult(const Round& round) {
    EXPECT_LE(ipc.posted.size(), 1U);
    if (ipc.posted.empty()) {
      EXPECT_TRUE(IsMemoryFault(round.kind)) << "no answer";
      return std::nullopt;
    }
    reply_ = ipc.posted[0].payload;
    const int result = request_.result(reply_);
    EXPECT_TRUE(result == 0 || result == request_.failureResult) << result;
    return result;
  }

  std::string InMemory() {
    const RequestCase& get = faults::RequestCaseOf(request_.getCode);
    const std::string reply = Send(get.payload(""), request_.getCode);
    EXPECT_EQ(get.result(reply), 0);
    return get.value(reply);
  }

  // The newest value on the disk, empty for none.
  std::string OnDisk() {
    const Lines rows = restarted_.Rows(profile, request_.file, request_.rows);
    return rows.empty() ? "" : rows.back();
  }

  std::string New() const {
    switch (request_.purpose) {
      case Purpose::Set:
        return old_ + " changed";
      case Purpose::Delete:
        return "";
      default:
        return old_;
    }
  }

  // What was answered with 0 is so. What was not may have been done in part: a Set deletes before it adds.
  void CheckMemory(std::optional<int> result) {
    if (result == 0 && (request_.purpose == Purpose::Get || request_.purpose == Purpose::List)) {
      EXPECT_EQ(request_.value(reply_), old_);
    }
    const std::string value = InMemory();
    if (result == 0) {
      EXPECT_EQ(value, New());
    } else {
      const bool isDeleted = request_.purpose == Purpose::Set && value.empty();
      EXPECT_TRUE(value == old_ || isDeleted || (!result.has_value() && value == New())) << value;
    }
  }

  void CheckDisk(std::optional<int> result, const Lines& lines) {
    const std::string value = OnDisk();
    if (result == request_.failureResult) {
      EXPECT_EQ(value, old_) << "nothing is saved after a failure";
    } else if (result == 0 && HasLine(lines, "3 [KTData] Save database success.")) {
      EXPECT_EQ(value, New());
    } else {
      EXPECT_TRUE(value == old_ || value == New()) << value;
    }
  }

  void CheckThatItWorksAgain() {
    const std::string reply = Send(request_.payload(old_ + " changed"), request_.code);
    EXPECT_EQ(request_.result(reply), 0) << "nothing fails any more";
    if (request_.purpose == Purpose::Set || request_.purpose == Purpose::Delete) {
      EXPECT_EQ(InMemory(), New());
      EXPECT_EQ(OnDisk(), New());
    }
  }

  faults::RestartedHost restarted_;
  TagIPCMessageItem item_;
  std::string payload_;
  std::string old_;
  std::string reply_;
  int rounds_ = 0;
};

TEST_P(RequestSweep, IsAnsweredRightlyAndLosesNothing) {
  Sweep(*injector_, faults::AllFaultKinds(),
        {.name = GetParam().name,
         .prepare = [this] { Prepare(); },
         .run = [this] { Run(); },
         .check = [this](const Round& round) { return Check(round); }});
}

INSTANTIATE_TEST_SUITE_P(Eleven, RequestSweep, testing::ValuesIn(faults::RequestCases()),
                         [](const auto& request) { return request.param.name; });

}  // namespace
