#include "tests/platform/ipc/RawHub.h"

#include <gtest/gtest.h>

RawHub::RawHub(const std::wstring& pipeName) {
  const auto address = platform::ipc::ResolvePipe(pipeName);
  claim_ = platform::ipc::ClaimPipe(address);
  EXPECT_NE(claim_, nullptr);
  listener_ = platform::ipc::ListenOnPipe(context_, address);
}

void RawHub::Accept() {
  bool done = false;
  listener_->Accept([&](const std::error_code& error, platform::ipc::Stream stream) {
    EXPECT_FALSE(error) << error.message();
    stream_ = std::move(stream);
    done = true;
    context_.stop();  // on Windows the next instance waits already
  });
  context_.restart();
  context_.run_for(kPatience);
  ASSERT_TRUE(done);
}

std::optional<TestFrame> RawHub::Greet(std::int32_t grantedId, std::int32_t status) {
  auto hello = Receive();
  Send(HelloAnswer(grantedId, status));
  return hello;
}
