#include "platform/ipc/IPCMessageHub.h"

#include <asio/executor_work_guard.hpp>
#include <asio/io_context.hpp>
#include <asio/post.hpp>
#include <exception>
#include <future>
#include <string>
#include <thread>
#include <utility>

#include "platform/ipc/HubCore.h"
#include "platform/ipc/LogTexts.h"
#include "platform/ipc/PipeTransport.h"
#include "platform/logging/LogLine.h"

using platform::ipc::HubCore;

class IPCMessageHub::Impl {
 public:
  Impl(std::wstring pipeName, const HubLimits& limits) : pipeName_(std::move(pipeName)), core_(context_, limits) {}

  bool Claim() {
    address_ = platform::ipc::ResolvePipe(pipeName_);
    claim_ = platform::ipc::ClaimPipe(address_);
    return claim_ != nullptr;
  }

  void SetStatusProvider(std::function<std::string()> provider) { core_.SetStatusProvider(std::move(provider)); }

  HubCounters Counters() const { return core_.Tally().Counters(); }

  void Start() {
    core_.Listen(address_);
    thread_ = std::thread([this] { Run(); });
  }

  void StopAccepting() {
    if (!thread_.joinable()) {
      return;
    }
    std::promise<void> stopped;
    asio::post(context_, [&] {
      core_.StopAccepting();
      stopped.set_value();
    });
    stopped.get_future().wait();
  }

  void Stop() {
    if (!thread_.joinable()) {
      return;
    }
    asio::post(context_, [this] { core_.Drain([this] { context_.stop(); }); });
    thread_.join();
    core_.CloseAll();
  }

 private:
  void Run() {
    const auto work = asio::make_work_guard(context_);
    while (!context_.stopped()) {
      try {
        context_.run();
      } catch (const std::exception& error) {
        platform::LogFailure("IPCMessageHub::Run", platform::ipc::kHubThreadFailure, std::string(error.what()));
      }
    }
  }

  const std::wstring pipeName_;
  platform::ipc::PipeAddress address_;
  std::unique_ptr<platform::ipc::PipeClaim> claim_;
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
