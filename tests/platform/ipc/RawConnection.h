// One connection between a hub and a client, as bytes: an end of any manners.
#pragma once

#include <asio/io_context.hpp>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/ipc/PipeTransport.h"
#include "tests/platform/ipc/TestFrame.h"

inline constexpr std::chrono::seconds kPatience{10};

class RawConnection {
 public:
  // Writes all of it; how much was taken before `patience` ran out or the connection ended.
  std::size_t Write(const std::string& bytes, std::chrono::milliseconds patience = kPatience);
  void Send(const TestFrame& frame);

  // The next frame; none when the connection ends or `patience` runs out before it is complete.
  std::optional<TestFrame> Receive(std::chrono::milliseconds patience = kPatience);

  // Whether the other end ends the connection within `patience`; drops what it sends meanwhile.
  bool IsClosed(std::chrono::milliseconds patience = kPatience);

  void Close();

 protected:
  RawConnection() = default;
  ~RawConnection() = default;

  // Runs the context until `done`; false, and what was begun is cancelled, when `patience` runs out before.
  bool RunUntil(const bool& done, std::chrono::milliseconds patience);

  asio::io_context context_;
  platform::ipc::Stream stream_{context_};

 private:
  std::string Read(std::size_t count, std::chrono::milliseconds patience);

  bool closed_ = false;
  bool unwritable_ = false;
};
