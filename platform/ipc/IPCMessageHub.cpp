#include "platform/ipc/IPCMessageHub.h"

#include <asio/io_context.hpp>
#include <asio/post.hpp>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

#include "platform/ipc/HubCore.h"
#include "platform/ipc/LogTexts.h"
#include "platform/ipc/PipeTransport.h"
#include "platform/ipc/RunUntilStopped.h"

using platform::ipc::HubCore;

class IPCMessageHub::Impl {
 public:
  Impl(std::wstring pipeName, const HubLimits& limits)
      : pipeName_(std::move(pipeName)), core_(context_, roundMemory_, limits) {}

  bool Claim() {
    address_ = platform::ipc::ResolvePipe(pipeName_);
    claim_ = platform::ipc::ClaimPipe(address_);
    return claim_ != nullptr;
  }

  void SetStatusProvider(std::function<std::string()> provider) { core_.SetStatusProvider(std::move(provider)); }

  HubCounters Counters() const { return core_.Tally().Counters(); }

  void Start() {
    core_.Listen(address_);
    thread_ = std::thread([this] {
      platform::ipc::RunUntilStopped(context_, "IPCMessageHub::Run", platform::ipc::kHubThreadFailure,
                                     [this] { core_.Resume(); });
    });
  }

  void StopAccepting() {
    if (!thread_.joinable()) {
      return;
    }
    asio::post(context_, platform::ipc::KeptIn(stopMemory_, [this] {
                 core_.StopAccepting();
                 const std::lock_guard lock(mutex_);
                 acceptsNoMore_ = true;
                 changed_.notify_one();
               }));
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return acceptsNoMore_; });
  }

  void Stop() {
    if (!thread_.joinable()) {
      return;
    }
    asio::post(context_, platform::ipc::KeptIn(stopMemory_, [this] { core_.Drain([this] { context_.stop(); }); }));
    thread_.join();
    core_.CloseAll();
  }

 private:
  const std::wstring pipeName_;
  platform::ipc::PipeAddress address_;
  std::unique_ptr<platform::ipc::PipeClaim> claim_;
  // Before the context, whose handlers lie in them to its end.
  platform::ipc::HandlerMemory roundMemory_;
  platform::ipc::HandlerMemory stopMemory_;
  std::mutex mutex_;
  std::condition_variable changed_;
  bool acceptsNoMore_ = false;
  asio::io_context context_{1};  // run by one thread
  HubCore core_;
  std::thread thread_;
};

IPCMessageHub::IPCMessageHub(const std::wstring& pipeName, const HubLimits& limits)
    : impl_(std::make_unique<Impl>(pipeName, limits)) {}

IPCMessageHub::~IPCMessageHub() { Stop(); }

bool IPCMessageHub::Claim() { return impl_->Claim(); }

void IPCMessageHub::SetStatusProvider(std::function<std::string()> provider) {
  impl_->SetStatusProvider(std::move(provider));
}

void IPCMessageHub::Start() { impl_->Start(); }

void IPCMessageHub::StopAccepting() { impl_->StopAccepting(); }

void IPCMessageHub::Stop() { impl_->Stop(); }

HubCounters IPCMessageHub::Counters() const { return impl_->Counters(); }
