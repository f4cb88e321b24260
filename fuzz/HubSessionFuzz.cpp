// A hub and several clients on pipes in memory, which do what the input says: connect, say hello, send frames and
// rubbish cut at any place, read or not, leave, while the hub is stopped or not. Beside it runs a plain model
// (HubModel.h) of what each may see: a fault ends its own connection alone, frames reach their receiver and nobody
// else, in order, whole and with their sender's true id, services' ids go to the hub's own process only, and queues
// keep to their limit.
#include <algorithm>
#include <array>
#include <asio/io_context.hpp>
#include <chrono>
#include <memory>
#include <string>

#include "fuzz/FuzzInput.h"
#include "fuzz/HubModel.h"
#include "platform/ipc/HubCore.h"

namespace {

using fuzz::Bytes;
using fuzz::FuzzInput;
using fuzz::HubModel;
using fuzz::ModelClient;
using fuzz::Require;
using platform::ipc::Frame;
using platform::ipc::HubCore;
using platform::ipc::MemoryPipe;

constexpr std::size_t kMostSteps = 96;
constexpr std::size_t kMostClients = 12;
constexpr std::uint64_t kForeignProcess = 2;
const std::string kStatusDocument = "{}";

constexpr std::array<std::size_t, 4> kQueueLimits{256, 1024, 4096, 16384};
constexpr std::array<std::size_t, 3> kCapacities{64, 300, 1 << 20};
constexpr std::array<std::int32_t, 8> kIds{-1, 0, 1, 2, 7, 0xffff, 0x10000, 0xc40000};

// Neither is ever destroyed: making a context costs more than an input, and the memory must outlive it.
platform::ipc::HandlerMemory& RoundMemory() {
  static auto* const memory = new platform::ipc::HandlerMemory;
  return *memory;
}

asio::io_context& Context() {
  static auto* const context = new asio::io_context;
  return *context;
}

HubLimits LimitsFrom(FuzzInput& input) {
  const auto choice = input.Take<std::uint8_t>();
  HubLimits limits;
  limits.connections = (choice & 4U) != 0 ? 3 : kMostClients;
  limits.unreadBytesPerConnection = kQueueLimits[choice & 3U];
  limits.helloTimeout = std::chrono::milliseconds((choice & 8U) != 0 ? 0 : 3'600'000);
  limits.frameTimeout = std::chrono::milliseconds((choice & 16U) != 0 ? 0 : 3'600'000);
  return limits;
}

class Session {
 public:
  explicit Session(FuzzInput& input)
      : input_(input),
        limits_(LimitsFrom(input)),
        hub_(Context(), RoundMemory(), limits_),
        model_(limits_, Bytes(kStatusDocument.begin(), kStatusDocument.end())) {
    hub_.SetStatusProvider([] { return kStatusDocument; });
    hub_.Listen("");
  }

  ~Session() {  // NOLINT(bugprone-exception-escape): what is thrown here ends the program, and so is found
    hub_.CloseAll();
    Run();
  }

  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  void Play() {
    for (std::size_t step = 0; step < kMostSteps && !input_.Empty(); ++step) {
      Step();
      Settle();
    }
    ReadAll();
    model_.CheckEnd();
    CheckDrain();
  }

 private:
  void Step() {
    const auto action = input_.Take<std::uint8_t>();
    switch (action % 8) {
      case 0:
        return Connect();
      case 1:
        return Send(Hello());
      case 2:
      case 3:
        return Send(SomeFrame());
      case 4:
        return Send(Rubbish());
      case 5:
        return Read(input_.Take<std::uint16_t>());
      case 6:
        return Leave();
      default:
        return action == 0xff ? Stop() : Read(1 << 20);
    }
  }

  void Connect() {
    if (model_.Clients().size() >= kMostClients || hasStopped_) return;
    const auto choice = input_.Take<std::uint8_t>();
    const bool isOwn = (choice & 1U) != 0;
    auto pipe = std::make_shared<MemoryPipe>(Context(), isOwn ? platform::ipc::OwnProcess() : kForeignProcess,
                                             kCapacities[(choice >> 1U) % kCapacities.size()]);
    model_.Connect(pipe, isOwn);
    platform::ipc::ConnectMemoryPipe(Context(), pipe);
  }

  // A client, in most cases the one that was last used or connected.
  std::size_t SomeClient() { return input_.Take<std::uint8_t>() % std::max<std::size_t>(model_.Clients().size(), 1); }

  std::int32_t SomeId() {
    const auto choice = input_.Take<std::uint8_t>();
    return choice < 0xf0 ? kIds[choice % kIds.size()] : input_.Take<std::int32_t>();
  }

  Bytes Hello() {
    const auto choice = input_.Take<std::uint8_t>();
    Bytes bytes;
    platform::ipc::AppendFrame(
        Frame{.sender = SomeId(), .code = platform::ipc::kHelloCode, .extra = choice == 0xff ? 2 : 1}, bytes);
    return bytes;
  }

  std::int32_t SmallNumber() { return static_cast<std::int32_t>(input_.Take<std::int8_t>()); }

  Bytes SomeFrame() {
    Bytes payload(input_.Take<std::uint8_t>() * std::size_t{16});
    const auto flags = input_.Take<std::uint8_t>();
    std::fill(payload.begin(), payload.end(), static_cast<char>(flags));
    Frame frame{.receiver = SomeId(), .sender = SomeId(), .code = SmallNumber(), .payload = payload};
    if ((flags & 1U) != 0) frame.replyCode = SmallNumber();
    if (flags > 0xf0) frame.status = SmallNumber();
    Bytes bytes;
    platform::ipc::AppendFrame(frame, bytes);
    return bytes;
  }

  Bytes Rubbish() {
    const std::string text = input_.TakeText(input_.Take<std::uint8_t>());
    return {text.begin(), text.end()};
  }

  // In two parts, between which the hub may run.
  void Send(const Bytes& bytes) {
    const std::size_t client = SomeClient();
    const std::size_t cut = std::min<std::size_t>(input_.Take<std::uint8_t>(), bytes.size());
    SendPart(client, std::span(bytes).first(cut));
    if ((cut & 1U) != 0) Settle();
    SendPart(client, std::span(bytes).subspan(cut));
  }

  void SendPart(std::size_t client, std::span<const char> bytes) {
    if (client >= model_.Clients().size() || bytes.empty()) return;
    const ModelClient& from = model_.Clients()[client];
    if (!from.isOpen || from.leaves) return;
    model_.Send(client, bytes);
    from.pipe->Push(bytes);
  }

  void Read(std::size_t bytes) {
    const std::size_t client = SomeClient();
    if (client < model_.Clients().size()) model_.Clients()[client].pipe->Take(bytes);
  }

  void Leave() {
    const std::size_t client = SomeClient();
    if (client >= model_.Clients().size()) return;
    model_.Leave(client);
    model_.Clients()[client].pipe->CloseByClient();
  }

  void Stop() {
    hub_.StopAccepting();
    model_.StopReading();
    hasStopped_ = true;
  }

  static void Run() {
    Context().restart();
    while (Context().poll() > 0) {
    }
  }

  void Settle() {
    Run();
    model_.Check();
    Require(hub_.Tally().Counters().connections == model_.OpenClients());
    Require(model_.OpenClients() <= limits_.connections);
  }

  // Until nobody has anything more to read. What one client still finds while nobody else reads was in its queue.
  void ReadAll() {
    for (bool isProgress = true; isProgress;) {
      isProgress = false;
      for (const ModelClient& client : model_.Clients()) {
        const std::size_t before = client.pipe->Written().size();
        while (client.pipe->TakenBytes() < client.pipe->Written().size()) {
          client.pipe->Take(client.pipe->Written().size());
          Settle();
          isProgress = true;
        }
        const std::size_t found = client.pipe->Written().size() - before;
        Require(client.IsService() || found <= limits_.unreadBytesPerConnection);
      }
    }
  }

  // Once its services have gone, a hub for which nobody has anything to read has nothing to wait for.
  void CheckDrain() {
    bool isDrained = false;
    hub_.Drain([&isDrained] { isDrained = true; });
    model_.StopReading();
    for (std::size_t i = 0; i < model_.Clients().size(); ++i) {
      if (!model_.Clients()[i].isOwnProcess) continue;
      model_.Leave(i);
      model_.Clients()[i].pipe->CloseByClient();
    }
    Settle();
    Require(isDrained);
  }

  FuzzInput& input_;
  const HubLimits limits_;
  HubCore hub_;
  HubModel model_;
  bool hasStopped_ = false;
};

}  // namespace

// Input: the hub's limits, then actions with their arguments.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzInput input(data, size);
  Session(input).Play();
  return 0;
}
