// One request at a time over one connection: sends bytes, waits for the bytes of the answer.
#pragma once

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "client/CallStatus.h"
#include "platform/ipc/IPCMessageClient.h"

namespace KT {

class RequestExchange {
 public:
  using Clock = std::chrono::steady_clock;

  struct Answer {
    CallStatus status = CallStatus::NoService;
    IpcStatus ipcStatus = IpcStatus::Answer;
    std::string explanation;  // empty when answered
    std::string payload;      // the service's bytes when answered
  };

  // `waitForService`: whether an absent hub is something to wait for, or an error at once.
  RequestExchange(std::wstring pipeName, bool waitForService);

  // The pipe that it connects to.
  const std::wstring& PipeName() const { return pipeName_; }

  RequestExchange(const RequestExchange&) = delete;
  RequestExchange& operator=(const RequestExchange&) = delete;

  // Sends `payload` to client `receiver` under `code` and waits for the answer until `timeout` has passed, connecting
  // first where there is no connection. Any thread; calls run one after another.
  Answer Run(int receiver, int code, std::string payload, std::chrono::milliseconds timeout);

 private:
  // Returns why there is no connection, or an empty string.
  std::string Connect(Clock::time_point deadline);
  // False when nothing was sent.
  bool Post(int receiver, int code, std::string& payload);
  // Returns the reply code to ask for.
  int ExpectAnswerFrom(int receiver);
  void OnAnswer(const TagIPCMessageItem& item);
  Answer WaitForAnswer(Clock::time_point deadline);

  const std::wstring pipeName_;
  const bool waitForService_;
  std::mutex callMutex_;  // held for a whole call
  int lastReplyCode_ = 0;
  int callbacks_ = 0;  // registered now

  std::mutex mutex_;  // guards what the client's thread touches, below
  std::condition_variable changed_;
  int receiver_ = 0;
  int replyCode_ = 0;  // that the present call waits for
  bool connectionLost_ = false;
  std::optional<Answer> answer_;

  std::unique_ptr<IPCMessageClient> client_;  // last: its thread ends before the members that it uses
};

}  // namespace KT
