#include "tests/platform/ipc/RawPeer.h"

#include <gtest/gtest.h>

#include <thread>

RawPeer::RawPeer(const std::wstring& pipeName) {
  const auto address = platform::ipc::ResolvePipe(pipeName);
  const auto deadline = std::chrono::steady_clock::now() + kPatience;
  std::error_code error = platform::ipc::ConnectToPipe(stream_, address);
  while (error && std::chrono::steady_clock::now() < deadline) {
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    error = platform::ipc::ConnectToPipe(stream_, address);
  }
  EXPECT_FALSE(error) << error.message();
}

std::int32_t RawPeer::SayHello(std::int32_t wanted) {
  Send(Hello(wanted));
  const auto answer = Receive();
  return answer && answer->status == 0 ? answer->receiver : -1;
}
