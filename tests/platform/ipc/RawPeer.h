// One connection to a hub, as bytes: a client of any manners.
#pragma once

#include <asio/io_context.hpp>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/ipc/PipeTransport.h"
#include "tests/platform/ipc/TestFrame.h"

inline constexpr std::chrono::seconds kPatience{10};

class RawPeer {
 public:
  // Connects, trying again for a while where the hub is busy. Fails the test when it cannot.
  explicit RawPeer(const std::wstring& pipeName);

  // Writes all of it; how much was taken before `patience` ran out or the connection ended.
  std::size_t Write(const std::string& bytes, std::chrono::milliseconds patience = kPatience);
  void Send(const TestFrame& frame);

  // The next frame; none when the connection ends or `patience` runs out before it is complete.
  std::optional<TestFrame> Receive(std::chrono::milliseconds patience = kPatience);

  // Says hello and returns the id granted, or -1.
  std::int32_t SayHello(std::int32_t wanted = -1);

  // Whether the hub ends the connection within `patience`; drops what it sends meanwhile.
  bool IsClosed(std::chrono::milliseconds patience = kPatience);

  void Close();

 private:
  bool RunUntil(const bool& done, std::chrono::milliseconds patience);
  std::string Read(std::size_t count, std::chrono::milliseconds patience);

  asio::io_context context_;
  platform::ipc::Stream stream_{context_};
  bool closed_ = false;
  bool unwritable_ = false;
};
