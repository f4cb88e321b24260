#include "tests/platform/ipc/RawPeer.h"

#include <gtest/gtest.h>

#include <asio/read.hpp>
#include <asio/write.hpp>
#include <thread>
#include <vector>

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

bool RawPeer::RunUntil(const bool& done, std::chrono::milliseconds patience) {
  context_.restart();
  context_.run_for(patience);
  if (!done) {
    stream_.cancel();
    context_.restart();
    context_.run();
    return false;
  }
  return true;
}

std::size_t RawPeer::Write(const std::string& bytes, std::chrono::milliseconds patience) {
  if (unwritable_) {
    return 0;  // Asio would wait for a readiness that has been reported already
  }
  bool done = false;
  std::size_t taken = 0;
  asio::async_write(stream_, asio::buffer(bytes), [&](const std::error_code& error, std::size_t count) {
    done = true;
    taken = count;
    unwritable_ = error && error != asio::error::operation_aborted;
  });
  RunUntil(done, patience);
  return taken;
}

void RawPeer::Send(const TestFrame& frame) { Write(frame.Bytes()); }

std::string RawPeer::Read(std::size_t count, std::chrono::milliseconds patience) {
  std::string bytes(count, '\0');
  bool done = false;
  asio::async_read(stream_, asio::buffer(bytes), [&](const std::error_code& error, std::size_t got) {
    done = true;
    bytes.resize(got);
    closed_ = error && error != asio::error::operation_aborted;
  });
  RunUntil(done, patience);
  return bytes;
}

std::optional<TestFrame> RawPeer::Receive(std::chrono::milliseconds patience) {
  const std::string length = Read(4, patience);
  if (length.size() < 4) {
    return std::nullopt;
  }
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    value |= std::uint32_t{static_cast<unsigned char>(length[i])} << (8 * i);
  }
  return TestFrame::Parse(Read(value, patience));
}

std::int32_t RawPeer::SayHello(std::int32_t wanted) {
  Send(Hello(wanted));
  const auto answer = Receive();
  return answer && answer->status == 0 ? answer->receiver : -1;
}

bool RawPeer::IsClosed(std::chrono::milliseconds patience) {
  const auto deadline = std::chrono::steady_clock::now() + patience;
  std::vector<char> dropped(64 * 1024);
  while (!closed_ && std::chrono::steady_clock::now() < deadline) {
    bool done = false;
    stream_.async_read_some(asio::buffer(dropped), [&](const std::error_code& error, std::size_t) {
      done = true;
      closed_ = error && error != asio::error::operation_aborted;
    });
    RunUntil(done, std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now()));
  }
  return closed_;
}

void RawPeer::Close() { stream_.close(); }
