#include <chrono>
#include <future>

#include "bench/roundtrip/Clients.h"
#include "bench/roundtrip/Exchange.h"
#include "codec/MessageParcel.h"
#include "codec/Protocol.h"
#include "codec/messages/EncodedSize.h"
#include "codec/messages/PeerSumMessages.h"
#include "platform/ipc/IPCMessageClient.h"

namespace bench {

namespace {

using namespace std::chrono_literals;

constexpr int kReplyCode = 1;

class CallbackClient final : public LoadClient {
 public:
  explicit CallbackClient(ClientLog& log)
      : log_(log), client_(IPCMessageClient::kAnyClientId, false, false, KT::kPipeName) {
    KT::PeerSumGetRequest request;
    request.udId = PeerUdId();
    const std::size_t size = KT::EncodedSize(request);
    request_ = std::make_shared<KT::MessageParcel>(static_cast<std::uint32_t>(size), nullptr, true);
    request.Serialize(request_);
    client_.RegisterMessageCallback(kReplyCode, this, &CallbackClient::OnAnswer);
    if (!client_.WaitUntilConnected(5s)) GiveUp("the host does not take a connection");
  }

  void Start() override { Post(); }

  void Join() override {
    last_.get_future().wait();
    client_.StopDelivery();
  }

 private:
  void Post() {
    TagIPCMessageItem item;
    item.receiver = KT::kServiceClientId;
    item.code = KT::PeerSumGetRequest::kCode;
    item.replyCode = kReplyCode;
    item.length = request_->GetDataSize();
    item.payload = reinterpret_cast<char*>(request_->GetBuffer());
    log_.Sending();
    if (!client_.PostIPCMessage(item)) GiveUp("the host ended a connection");
  }

  void OnAnswer(TagIPCMessageItem& item) {
    KT::PeerSumGetResponse response;
    response.Deserialize(std::make_shared<KT::MessageParcel>(static_cast<std::uint32_t>(item.length),
                                                             reinterpret_cast<std::uint8_t*>(item.payload), false));
    log_.Answered();
    if (response.sumId != expected_) GiveUp("a wrong answer");
    if (log_.Stopped()) {
      last_.set_value();
    } else {
      Post();
    }
  }

  ClientLog& log_;
  const std::string expected_ = PeerSumId();
  std::shared_ptr<KT::MessageParcel> request_;
  std::promise<void> last_;
  IPCMessageClient client_;  // last: its thread ends before what it uses
};

}  // namespace

std::unique_ptr<LoadClient> MakeCallbackClient(ClientLog& log) { return std::make_unique<CallbackClient>(log); }

}  // namespace bench
