#include "tests/e2e/client/BadFrame.h"

#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "codec/Protocol.h"
#include "tests/platform/ipc/RawConnection.h"
#include "tests/platform/ipc/TestFrame.h"

namespace e2e {

namespace {

constexpr std::chrono::seconds kWait{60};
constexpr std::chrono::milliseconds kRetryPause{20};

class BadClient : public RawConnection {
 public:
  bool Connect() { return !platform::ipc::ConnectToPipe(stream_, platform::ipc::ResolvePipe(KT::kPipeName)); }
};

// Each costs its sender the connection (docs/ipc.md).
std::string Bytes(int kind) {
  const TestFrame request{.receiver = KT::kServiceClientId, .code = 0xc4000a, .replyCode = 1, .payload = "xx"};
  TestFrame noBool = request;
  noBool.isLast = 2;
  TestFrame noUtf8 = request;
  noUtf8.name = "\xff";
  TestFrame forged = request;
  forged.status = 1;
  const std::vector<std::string> frames{
      LittleEndian(0, 4) + request.Bytes(),       // shorter than any frame
      LittleEndian(65'537, 4) + request.Bytes(),  // longer than any frame
      LittleEndian(0xFFFFFFFF, 4),                // the same
      request.Bytes(33, 3),                       // a name beyond the frame's end
      noUtf8.Bytes(),                             // a name that is not UTF-8
      noBool.Bytes(),                             // an isLast that is neither 0 nor 1
      forged.Bytes(),                             // a status that is the hub's to send
      Hello().Bytes(),                            // a second hello
  };
  return frames[static_cast<std::size_t>(kind) % frames.size()];
}

}  // namespace

bool SendBadFrame(int kind) {
  const auto deadline = std::chrono::steady_clock::now() + kWait;
  while (std::chrono::steady_clock::now() < deadline) {
    BadClient client;
    if (client.Connect()) {
      client.Send(Hello());
      const auto answer = client.Receive();
      if (answer.has_value() && answer->status == 0) {
        client.Write(Bytes(kind));
        return client.IsClosed(kWait);
      }
    }
    std::this_thread::sleep_for(kRetryPause);
  }
  return false;
}

}  // namespace e2e
