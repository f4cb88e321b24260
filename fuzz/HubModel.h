// What a hub's clients may see, worked out from what they sent: who is let in, whose frames reach whom, and who may be
// cut off. Knows nothing of queues, buffers and turns.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "platform/ipc/Frame.h"
#include "platform/ipc/IPCMessageHub.h"
#include "platform/ipc/PipeTransport.h"

namespace fuzz {

using Bytes = std::vector<char>;

// A frame that a client sent after its hello.
struct SentFrame {
  Bytes bytes;  // with 0 as the sender
  std::int32_t receiver = 0;
  std::int32_t code = 0;
  std::int32_t replyCode = 0;
  std::int32_t status = 0;
  std::size_t time = 0;  // the step in which it was sent
};

struct ModelClient {
  std::shared_ptr<platform::ipc::MemoryPipe> pipe;
  bool isOwnProcess = false;
  bool isOpen = true;        // for the hub, as far as was seen
  bool breaksRules = false;  // something it sent must end it
  bool leaves = false;       // it closed its end
  std::int32_t id = platform::ipc::kAnyId;
  std::size_t grantTime = 0;

  Bytes unparsed;  // of what it sent
  bool saidHello = false;
  std::optional<std::int32_t> helloStatus;  // that it must be answered with, until it was
  std::int32_t wanted = platform::ipc::kAnyId;
  std::vector<SentFrame> sent;

  std::size_t seenBytes = 0;  // of what the hub wrote to it
  std::size_t nextReply = 0;  // in `sent`: the first one that the hub's next answer can be about
  std::map<std::int32_t, std::vector<Bytes>> received;  // by sender; with 0 as the sender
  std::map<std::size_t, std::size_t> nextFrom;          // by client: the first frame of its that can be the next one

  // Bytes of frames for it, at most, from clients and from services and the hub, which never have to wait.
  std::size_t fromClients = 0;
  std::size_t fromOthers = 0;
  std::size_t largestFromClient = 0;

  bool IsGranted() const { return id != platform::ipc::kAnyId; }
  bool IsService() const { return id >= platform::ipc::kFirstServiceId; }
};

class HubModel {
 public:
  HubModel(const HubLimits& limits, Bytes statusDocument)
      : limits_(limits), statusDocument_(std::move(statusDocument)) {}

  const std::vector<ModelClient>& Clients() const { return clients_; }
  std::size_t OpenClients() const;

  // Before the pipe is connected and the hub runs.
  void Connect(std::shared_ptr<platform::ipc::MemoryPipe> pipe, bool isOwnProcess);
  // Before the bytes are pushed and the hub runs.
  void Send(std::size_t client, std::span<const char> bytes);
  void Leave(std::size_t client) { clients_[client].leaves = true; }
  // The hub reads nothing more from other processes.
  void StopReading() { hasStopped_ = true; }

  // After the hub has run until nothing was left to do: looks at what came of it.
  void Check();

  // After everything was read and nothing waits any more: what had to arrive has arrived.
  void CheckEnd() const;

 private:
  void OnFrame(ModelClient& from, const platform::ipc::Frame& frame, std::span<const char> bytes);
  void OnHello(ModelClient& from, const platform::ipc::Frame& frame);
  void ChargeReceiver(const ModelClient& from, const SentFrame& frame);
  void ChargeWaiting(ModelClient& to) const;
  static void Charge(const ModelClient& from, const SentFrame& frame, ModelClient& to);
  bool MayEnd(const ModelClient& client) const;
  void CheckWritten(std::size_t index);
  void OnReceived(std::size_t index, const platform::ipc::Frame& frame, std::span<const char> bytes);
  void CheckHubFrame(ModelClient& to, const platform::ipc::Frame& frame) const;
  void CheckHelloAnswer(ModelClient& to, const platform::ipc::Frame& frame) const;
  void CheckRouted(ModelClient& to, std::int32_t sender, Bytes bytes);
  void CheckPair(const ModelClient& from, const ModelClient& to) const;
  const ModelClient* OwnerOf(std::int32_t id) const;
  bool IsRead(const ModelClient& client) const { return client.isOwnProcess || !hasStopped_; }

  const HubLimits limits_;
  const Bytes statusDocument_;
  std::vector<ModelClient> clients_;
  std::size_t time_ = 0;
  bool hasStopped_ = false;
};

}  // namespace fuzz
