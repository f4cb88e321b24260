#include "tests/platform/ipc/RawConnection.h"

#include <asio/read.hpp>
#include <asio/write.hpp>
#include <vector>

bool RawConnection::RunUntil(const bool& done, std::chrono::milliseconds patience) {
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

std::size_t RawConnection::Write(const std::string& bytes, std::chrono::milliseconds patience) {
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

void RawConnection::Send(const TestFrame& frame) { Write(frame.Bytes()); }

std::string RawConnection::Read(std::size_t count, std::chrono::milliseconds patience) {
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

std::optional<TestFrame> RawConnection::Receive(std::chrono::milliseconds patience) {
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

bool RawConnection::IsClosed(std::chrono::milliseconds patience) {
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

void RawConnection::Close() { stream_.close(); }
