// A client that keeps several requests under way and counts what comes back for each of them.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <map>
#include <mutex>
#include <string>

#include "platform/ipc/IPCMessageClient.h"

namespace e2e {

// What has come of the requests sent.
struct Tally {
  std::size_t sent = 0;
  std::size_t answered = 0;  // at least once
  std::size_t right = 0;     // answers as expected
  std::size_t wrong = 0;     // other answers, and those that came a second time
  std::string firstFault;    // in words, empty while there is none
};

// One thread sends; answers are judged on the connection's own thread.
class PipelinedClient {
 public:
  // What is wrong with an answer, or an empty string.
  using Judge = std::function<std::string(const std::string& payload)>;

  // At most `window` requests wait for their answers at a time.
  explicit PipelinedClient(std::size_t window);

  bool Connect(std::chrono::milliseconds patience);

  // Waits for room in the window and sends to the service. False, and nothing sent, when the connection has ended or
  // no answer has come for `kPatience`.
  bool Send(int code, std::string payload, Judge judge);

  // Waits until everything sent is answered; false as for Send.
  bool Finish();

  Tally Result();

 private:
  static constexpr std::chrono::seconds kPatience{60};

  void OnAnswer(const TagIPCMessageItem& item);
  void Count(const TagIPCMessageItem& item, Judge judge);
  bool WaitForRoom(std::size_t room);

  const std::size_t window_;
  std::mutex mutex_;  // guards what follows
  std::condition_variable changed_;
  std::map<int, Judge> judges_;  // by reply code, of the requests without an answer
  Tally tally_;
  bool lost_ = false;

  IPCMessageClient client_;  // last: its thread ends before what it uses
};

}  // namespace e2e
