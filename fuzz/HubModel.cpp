#include "fuzz/HubModel.h"

#include <algorithm>

#include "fuzz/FuzzInput.h"
#include "platform/ipc/TagIPCMessageItem.h"

namespace fuzz {

namespace {

using platform::ipc::Frame;
using platform::ipc::FrameResult;
using platform::ipc::FrameState;
using platform::ipc::kAnyId;
using platform::ipc::kHubId;

Bytes WithoutSender(std::span<const char> bytes) {
  Bytes copy(bytes.begin(), bytes.end());
  platform::ipc::SetSender(copy, 0);
  return copy;
}

bool Is(const Frame& frame, IpcStatus status) { return frame.status == static_cast<std::int32_t>(status); }

bool MaySend(const Frame& frame) {
  return frame.status == 0 ||
         ((Is(frame, IpcStatus::NoCallback) || Is(frame, IpcStatus::UnsendableAnswer)) && frame.payload.empty());
}

// Whether `sent` is a request that the hub has to answer where nobody else does.
bool WantsAnswer(const SentFrame& sent) { return sent.status == 0 && sent.replyCode != platform::ipc::kNoReplyCode; }

}  // namespace

std::size_t HubModel::OpenClients() const {
  return static_cast<std::size_t>(
      std::count_if(clients_.begin(), clients_.end(), [](const ModelClient& client) { return client.isOpen; }));
}

void HubModel::Connect(std::shared_ptr<platform::ipc::MemoryPipe> pipe, bool isOwnProcess) {
  ++time_;
  ModelClient client;
  client.pipe = std::move(pipe);
  client.isOwnProcess = isOwnProcess;
  client.breaksRules = OpenClients() >= limits_.connections;
  ChargeWaiting(client);
  clients_.push_back(std::move(client));
}

void HubModel::Send(std::size_t client, std::span<const char> bytes) {
  ++time_;
  ModelClient& from = clients_[client];
  if (!IsRead(from)) return;
  from.unparsed.insert(from.unparsed.end(), bytes.begin(), bytes.end());
  std::span<char> rest(from.unparsed);
  while (!from.breaksRules) {
    const FrameResult parsed = platform::ipc::ParseFrame(rest);
    if (parsed.state == FrameState::Incomplete) break;
    if (parsed.state == FrameState::Complete) {
      OnFrame(from, parsed.frame, parsed.bytes);
      rest = rest.subspan(parsed.bytes.size());
    } else {
      from.breaksRules = true;
    }
  }
  from.unparsed = Bytes(rest.begin(), rest.end());
}

void HubModel::OnFrame(ModelClient& from, const Frame& frame, std::span<const char> bytes) {
  const bool isHello = frame.receiver == kHubId && frame.code == platform::ipc::kHelloCode;
  if (!from.saidHello) {
    from.saidHello = true;
    from.breaksRules = !isHello || frame.status != 0;
    if (!from.breaksRules) OnHello(from, frame);
    return;
  }
  from.breaksRules = !MaySend(frame) || isHello;
  if (!from.breaksRules) {
    from.sent.push_back({WithoutSender(bytes), frame.receiver, frame.code, frame.replyCode, frame.status, time_});
    ChargeReceiver(from, from.sent.back());
  }
}

void HubModel::OnHello(ModelClient& from, const Frame& frame) {
  IpcStatus status = IpcStatus::Answer;
  if (frame.extra != platform::ipc::kProtocolVersion) {
    status = IpcStatus::UnsupportedVersion;
  } else if (frame.sender < kAnyId || (frame.sender >= platform::ipc::kFirstServiceId && !from.isOwnProcess)) {
    status = IpcStatus::IdReserved;
  } else if (frame.sender == kHubId || OwnerOf(frame.sender) != nullptr) {
    status = IpcStatus::IdTaken;
  }
  from.helloStatus = static_cast<std::int32_t>(status);
  from.wanted = frame.sender;
  from.breaksRules = status != IpcStatus::Answer;
  from.fromOthers += platform::ipc::kFrameHeaderBytes;
}

// Every frame may reach whoever has or will have the id; what the hub itself answers is for the sender.
void HubModel::ChargeReceiver(const ModelClient& from, const SentFrame& frame) {
  for (ModelClient& to : clients_) {
    if (&to == &from) to.fromOthers += platform::ipc::kFrameHeaderBytes + statusDocument_.size();
    if (to.isOpen && (!to.IsGranted() || to.id == frame.receiver)) Charge(from, frame, to);
  }
}

// Behind a frame for a service, which has to wait where that one is busy, others may wait until their receiver comes.
void HubModel::ChargeWaiting(ModelClient& to) const {
  for (const ModelClient& from : clients_) {
    const auto isForService = [](const SentFrame& frame) { return frame.receiver >= platform::ipc::kFirstServiceId; };
    const auto first = std::find_if(from.sent.begin(), from.sent.end(), isForService);
    std::for_each(first, from.sent.end(), [&](const SentFrame& frame) { Charge(from, frame, to); });
  }
}

void HubModel::Charge(const ModelClient& from, const SentFrame& frame, ModelClient& to) {
  (from.IsService() ? to.fromOthers : to.fromClients) += frame.bytes.size();
  if (!from.IsService()) to.largestFromClient = std::max(to.largestFromClient, frame.bytes.size());
}

const ModelClient* HubModel::OwnerOf(std::int32_t id) const {
  const auto owner = std::find_if(clients_.begin(), clients_.end(), [id](const ModelClient& client) {
    return client.isOpen && client.IsGranted() && client.id == id;
  });
  return owner == clients_.end() ? nullptr : &*owner;
}

bool HubModel::MayEnd(const ModelClient& client) const {
  if (client.breaksRules || client.leaves) return true;
  if (!client.IsGranted()) return limits_.helloTimeout.count() == 0;
  if (!client.unparsed.empty() && limits_.frameTimeout.count() == 0) return true;
  const std::size_t limit = limits_.unreadBytesPerConnection;
  if (client.IsService()) {  // clients have to wait where a quarter of the limit does
    return client.fromOthers + client.largestFromClient + limit / 4 > limit;
  }
  return client.fromClients + client.fromOthers - client.pipe->TakenBytes() > limit;
}

void HubModel::Check() {
  for (std::size_t i = 0; i < clients_.size(); ++i) CheckWritten(i);
  for (ModelClient& client : clients_) {
    const bool hasEnded = client.isOpen && client.pipe->IsClosedByHub();
    Require(!hasEnded || MayEnd(client));
    if (hasEnded) client.isOpen = false;
  }
}

void HubModel::CheckWritten(std::size_t index) {
  ModelClient& client = clients_[index];
  Bytes written(client.pipe->Written().begin() + static_cast<std::ptrdiff_t>(client.seenBytes),
                client.pipe->Written().end());
  std::span<char> rest(written);
  for (FrameResult parsed = platform::ipc::ParseFrame(rest); parsed.state != FrameState::Incomplete;
       parsed = platform::ipc::ParseFrame(rest)) {
    Require(parsed.state == FrameState::Complete);
    OnReceived(index, parsed.frame, parsed.bytes);
    client.seenBytes += parsed.bytes.size();
    rest = rest.subspan(parsed.bytes.size());
  }
}

void HubModel::OnReceived(std::size_t index, const Frame& frame, std::span<const char> bytes) {
  ModelClient& to = clients_[index];
  if (to.helloStatus.has_value()) {
    CheckHelloAnswer(to, frame);
    return;
  }
  Require(to.IsGranted() && frame.receiver == to.id);
  if (frame.sender == kHubId) {
    CheckHubFrame(to, frame);
  } else {
    CheckRouted(to, frame.sender, WithoutSender(bytes));
  }
}

void HubModel::CheckHelloAnswer(ModelClient& to, const Frame& frame) const {
  Require(frame.sender == kHubId && frame.code == platform::ipc::kHelloCode && frame.payload.empty());
  Require(frame.status == *to.helloStatus);
  if (frame.status == 0) {
    const bool isWanted = to.wanted == kAnyId || frame.receiver == to.wanted;
    Require(isWanted && frame.receiver > kHubId && OwnerOf(frame.receiver) == nullptr);
    Require(to.wanted != kAnyId || frame.receiver < platform::ipc::kFirstServiceId);
    Require(to.isOwnProcess || frame.receiver < platform::ipc::kFirstServiceId);
    to.id = frame.receiver;
    to.grantTime = time_;
  } else {
    Require(frame.receiver == kAnyId);
  }
  to.helloStatus.reset();
}

// The hub's own frames answer requests of the receiver, in their order.
void HubModel::CheckHubFrame(ModelClient& to, const Frame& frame) const {
  const auto isAnswered = [&frame, this](const SentFrame& sent) {
    if (!WantsAnswer(sent) || sent.replyCode != frame.code) return false;
    if (sent.receiver == kHubId && sent.code == platform::ipc::kStatusCode) {
      return frame.status == 0 &&
             std::equal(frame.payload.begin(), frame.payload.end(), statusDocument_.begin(), statusDocument_.end());
    }
    const auto expected = sent.receiver == kHubId ? IpcStatus::NoCallback : IpcStatus::NoSuchReceiver;
    return Is(frame, expected) && frame.payload.empty();
  };
  const auto from = to.sent.begin() + static_cast<std::ptrdiff_t>(to.nextReply);
  const auto request = std::find_if(from, to.sent.end(), isAnswered);
  Require(request != to.sent.end());
  to.nextReply = static_cast<std::size_t>(request - to.sent.begin()) + 1;
}

// Somebody with that id sent this frame to this receiver, after the one that came before.
void HubModel::CheckRouted(ModelClient& to, std::int32_t sender, Bytes bytes) {
  for (std::size_t i = 0; i < clients_.size(); ++i) {
    const ModelClient& from = clients_[i];
    if (from.id != sender) continue;
    const auto begin = from.sent.begin() + static_cast<std::ptrdiff_t>(to.nextFrom[i]);
    const auto found = std::find_if(
        begin, from.sent.end(), [&](const SentFrame& sent) { return sent.receiver == to.id && sent.bytes == bytes; });
    if (found != from.sent.end()) {
      to.nextFrom[i] = static_cast<std::size_t>(found - from.sent.begin()) + 1;
      to.received[sender].push_back(std::move(bytes));
      return;
    }
  }
  Require(false);
}

void HubModel::CheckEnd() const {
  for (const ModelClient& client : clients_) {
    Require(!client.isOpen || !IsRead(client) || (!client.breaksRules && !client.leaves));
    if (!client.isOpen || !client.IsGranted() || !IsRead(client)) continue;
    for (const ModelClient& to : clients_) {
      if (to.isOpen && to.IsGranted()) CheckPair(client, to);
    }
  }
}

// Whatever `from` sent since `to` has its id has arrived, and nothing came after it.
void HubModel::CheckPair(const ModelClient& from, const ModelClient& to) const {
  std::vector<Bytes> expected;
  for (const SentFrame& sent : from.sent) {
    if (sent.receiver == to.id && sent.time > to.grantTime) expected.push_back(sent.bytes);
  }
  const auto received = to.received.find(from.id);
  const std::size_t count = received == to.received.end() ? 0 : received->second.size();
  Require(count >= expected.size());
  if (!expected.empty()) {
    Require(std::equal(expected.begin(), expected.end(),
                       received->second.end() - static_cast<std::ptrdiff_t>(expected.size())));
  }
}

}  // namespace fuzz
