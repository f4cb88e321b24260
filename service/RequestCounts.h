// What became of the requests of one code.
#pragma once

#include <atomic>
#include <cstdint>

#include "codec/Protocol.h"

namespace KT {

// Every request is counted as received when it arrives, and in one of the others when its handler is done.
struct RequestCounts {
  std::uint64_t received = 0;
  std::uint64_t succeeded = 0;         // answered with kResultSuccess
  std::uint64_t readOrPeerFailed = 0;  // answered with kResultReadOrPeerFailed
  std::uint64_t tapChangeFailed = 0;   // answered with kResultTapChangeFailed
  std::uint64_t unanswered = 0;        // no answer of the handler's left: no payload, no memory, no connection, or an
                                       // answer that did not fit its reply
};

// Counted on the delivery thread, read on any.
class RequestTally {
 public:
  RequestCounts Counts() const { return {received_, succeeded_, readOrPeerFailed_, tapChangeFailed_, unanswered_}; }

  void Receive() { ++received_; }
  void Answer(int result) { ++ResultCounter(result); }
  void LeaveUnanswered() { ++unanswered_; }

 private:
  using Counter = std::atomic<std::uint64_t>;

  Counter& ResultCounter(int result) {
    if (result == kResultSuccess) {
      return succeeded_;
    }
    return result == kResultTapChangeFailed ? tapChangeFailed_ : readOrPeerFailed_;
  }

  Counter received_ = 0;
  Counter succeeded_ = 0;
  Counter readOrPeerFailed_ = 0;
  Counter tapChangeFailed_ = 0;
  Counter unanswered_ = 0;
};

// One request on its way through its handler: left unanswered unless told otherwise, also where the handler throws.
class CountedRequest {
 public:
  explicit CountedRequest(RequestTally& tally) : tally_(tally) { tally_.Receive(); }
  ~CountedRequest() {
    if (!isAnswered_) {
      tally_.LeaveUnanswered();
    }
  }

  CountedRequest(const CountedRequest&) = delete;
  CountedRequest& operator=(const CountedRequest&) = delete;

  void Answered(int result) {
    tally_.Answer(result);
    isAnswered_ = true;
  }

 private:
  RequestTally& tally_;
  bool isAnswered_ = false;
};

}  // namespace KT
