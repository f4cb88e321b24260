#include "tests/platform/ipc/IpcTest.h"

#include <algorithm>
#include <thread>

#include "platform/logging/QxLogger.h"

bool Eventually(const std::function<bool()>& condition) {
  const auto deadline = std::chrono::steady_clock::now() + kPatience;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) {
      return false;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  return true;
}

IpcTest::IpcTest() {
  QxLogger::GetInstance().SetObserver([this](QxLogLevel, const std::wstring& text) {
    const std::lock_guard lock(linesMutex_);
    lines_.push_back(text);
  });
}

IpcTest::~IpcTest() {
  hub_.reset();
  QxLogger::GetInstance().SetObserver({});
}

void IpcTest::StartHub(const HubLimits& limits) {
  hub_ = std::make_unique<IPCMessageHub>(pipeName_, limits);
  ASSERT_TRUE(hub_->Claim());
  hub_->Start();
}

int IpcTest::LinesWith(const std::wstring& part) {
  const std::lock_guard lock(linesMutex_);
  const auto contains = [&](const std::wstring& line) { return line.find(part) != std::wstring::npos; };
  return static_cast<int>(std::count_if(lines_.begin(), lines_.end(), contains));
}
