// Memory that runs out on any thread while requests, connections and stops go through the hub and the clients.
#include <atomic>
#include <exception>
#include <functional>
#include <iostream>
#include <optional>
#include <thread>

#include "tests/faults/Stride.h"
#include "tests/platform/ipc/IpcTest.h"
#include "tests/support/AllocationFaults.h"

namespace {

using support::FaultSpan;

constexpr int kServiceId = 0xc40000;
constexpr int kRequestCode = 7;
constexpr int kAnswerCode = 42;
// What an answer that comes takes many times less than.
constexpr std::chrono::milliseconds kShortWait{150};

// Longer than the buffers of a fresh connection, which have to grow.
const std::string& Text() {
  static const std::string text(60'000, 'x');
  return text;
}

// Waits until `isDone`, or until kShortWait after `isDoubtful` first held; false then.
template <class IsDone, class IsDoubtful>
bool WaitUntil(IsDone isDone, IsDoubtful isDoubtful) {
  using Clock = std::chrono::steady_clock;
  auto end = Clock::now() + kPatience;
  for (bool wasDoubtful = false; !isDone();) {
    if (!wasDoubtful && isDoubtful()) {
      wasDoubtful = true;
      end = Clock::now() + kShortWait;
    }
    if (Clock::now() > end) {
      return false;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

// A client that answers each request with its payload.
class Echo {
 public:
  explicit Echo(const std::wstring& pipeName) : client_(kServiceId, false, false, pipeName) {
    client_.RegisterMessageCallback(kRequestCode, [this](TagIPCMessageItem& item) {
      TagIPCMessageItem answer;
      answer.receiver = item.sender;
      answer.code = item.replyCode;
      answer.payload = item.payload;
      answer.length = item.length;
      client_.PostIPCMessage(answer);
    });
  }

  bool IsConnected() const { return client_.WaitUntilConnected({}); }

 private:
  IPCMessageClient client_;
};

class Asker {
 public:
  explicit Asker(const std::wstring& pipeName) : client_(IPCMessageClient::kAnyClientId, false, false, pipeName) {
    client_.RegisterMessageCallback(kAnswerCode, [this](TagIPCMessageItem& item) {
      isAnswered_ = item.status == 0 && std::string_view(item.payload, static_cast<std::size_t>(item.length)) == Text();
    });
  }

  // Sends a request and waits for its answer.
  template <class IsDoubtful>
  bool Ask(IsDoubtful isDoubtful) {
    isAnswered_ = false;
    return WaitUntil([this] { return client_.WaitUntilConnected({}); }, isDoubtful) &&
           client_.PostIPCMessage(request_) && WaitUntil([this] { return isAnswered_.load(); }, isDoubtful);
  }

 private:
  static TagIPCMessageItem Request() {
    static std::string text = Text();
    TagIPCMessageItem request;
    request.receiver = kServiceId;
    request.code = kRequestCode;
    request.replyCode = kAnswerCode;
    request.payload = text.data();
    request.length = static_cast<int>(text.size());
    return request;
  }

  const TagIPCMessageItem request_ = Request();
  std::atomic<bool> isAnswered_ = false;
  IPCMessageClient client_;  // last, since its callback uses the others
};

// A hub with a service and a client. Unless a sweep is about their starts and stops they are the same throughout, so
// that they have to get over each fault by themselves.
class IpcMemorySweep : public IpcTest {
 protected:
  IpcMemorySweep() {
    Start();
    EXPECT_TRUE(Works());
  }
  ~IpcMemorySweep() override { Stop(); }

  void Start() {
    StartHub();
    service_.emplace(pipeName_);
    asker_.emplace(pipeName_);
  }

  void Stop() {
    asker_.reset();
    service_.reset();
    hub_.reset();
  }

  void Restart() {
    Stop();
    Start();
  }

  struct Swept {
    const char* name;
    std::function<void()> prepare;
    std::function<bool()> run;  // returns whether it came to what it should, and may throw
    std::function<void()> restore;
  };

  // Runs the operation with the first allocation of all failing, then with the second one, and so on until it does not
  // reach the fault.
  void Sweep(const Swept& swept) {
    int injected = 0;
    int failed = 0;
    for (const FaultSpan span : {FaultSpan::Once, FaultSpan::FromThenOn}) {
      bool isReached = true;
      for (int nth = 1; isReached; nth += faults::Stride()) {
        SCOPED_TRACE(std::string(swept.name) + ": allocation " + std::to_string(nth) +
                     (span == FaultSpan::Once ? "" : " and from then on"));
        swept.prepare();
        fault_.emplace(nth, span);
        const bool hasSucceeded = Attempt(swept.run);
        fault_->Stop();
        isReached = fault_->Happened();
        EXPECT_TRUE(isReached || hasSucceeded) << "failed without a fault";
        injected += isReached ? 1 : 0;
        failed += hasSucceeded ? 0 : 1;
        swept.restore();
        ASSERT_TRUE(Works());
      }
    }
    std::cout << "faults: " << swept.name << ": " << injected << " injected, " << failed << " failed, "
              << injected - failed << " survived" << std::endl;
    RecordProperty("injected", injected);
    RecordProperty("failed", failed);
  }

  bool HasFailed() const { return fault_->Happened(); }
  bool Asks(Asker& asker) {
    return asker.Ask([this] { return HasFailed(); });
  }

  std::optional<Echo> service_;
  std::optional<Asker> asker_;

 private:
  // Those that were there are served, and so are those that come anew.
  bool Works() {
    const auto isDoubtful = [] { return true; };  // an answer may be lost with its connection
    const auto isAnswered = [&](Asker& asker) { return Eventually([&] { return asker.Ask(isDoubtful); }); };
    Asker another(pipeName_);
    return isAnswered(*asker_) && isAnswered(another);
  }

  static bool Attempt(const std::function<bool()>& operation) {
    try {
      return operation();
    } catch (const std::exception&) {
      return false;
    }
  }

  std::optional<support::ProcessAllocationFault> fault_;
};

const auto kNothing = [] {};

TEST_F(IpcMemorySweep, RequestOverAnOpenConnection) {
  Sweep({"request through the pipe", kNothing, [this] { return Asks(*asker_); }, kNothing});
}

TEST_F(IpcMemorySweep, ConnectionRequestAndEnd) {
  const auto converse = [this] {
    Asker asker(pipeName_);
    return Asks(asker);
  };
  Sweep({"connection", kNothing, converse, kNothing});
}

TEST_F(IpcMemorySweep, StartOfAHubAndItsService) {
  const auto start = [this] {
    StartHub();
    service_.emplace(pipeName_);
    return WaitUntil([this] { return service_->IsConnected(); }, [this] { return HasFailed(); });
  };
  Sweep({"start of the hub", [this] { Stop(); }, start, [this] { Restart(); }});
}

TEST_F(IpcMemorySweep, StopOfAServiceAndItsHub) {
  const auto stop = [this] {
    hub_->StopAccepting();
    service_.reset();
    hub_->Stop();
    return true;
  };
  Sweep({"stop of the hub", kNothing, stop, [this] { Restart(); }});
}

}  // namespace
