#include <thread>

#include "bench/roundtrip/Clients.h"
#include "bench/roundtrip/Exchange.h"
#include "client/RegistryClient.h"

namespace bench {

namespace {

class TypedClient final : public LoadClient {
 public:
  explicit TypedClient(ClientLog& log) : log_(log) { Ask(); }

  void Start() override {
    thread_ = std::thread([this] {
      while (!log_.Stopped()) Ask();
    });
  }

  void Join() override { thread_.join(); }

 private:
  void Ask() {
    log_.Sending();
    const auto outcome = client_.GetPeerDevice(udId_);
    log_.Answered();
    if (!outcome.Succeeded() || outcome.response.sumId != expected_) GiveUp("a wrong answer: " + outcome.explanation);
  }

  ClientLog& log_;
  const std::string udId_ = PeerUdId();
  const std::string expected_ = PeerSumId();
  KT::RegistryClient client_;
  std::thread thread_;
};

}  // namespace

std::unique_ptr<LoadClient> MakeTypedClient(ClientLog& log) { return std::make_unique<TypedClient>(log); }

}  // namespace bench
