// A frame as bytes, put together and taken apart without the code under test, so that it can also be a bad one.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

struct TestFrame {
  std::int32_t receiver = 0;
  std::int32_t sender = -1;
  std::int32_t code = 0;
  std::int32_t replyCode = -1;
  std::int32_t session = -1;
  std::int32_t status = 0;
  std::uint8_t isLast = 1;
  std::int32_t extra = 0;
  std::string name{};
  std::string payload{};

  std::string Bytes() const;
  // With lengths other than those of what follows.
  std::string Bytes(std::uint32_t length, std::uint16_t nameLength) const;

  // From what follows the length field.
  static std::optional<TestFrame> Parse(const std::string& body);

  bool operator==(const TestFrame&) const = default;
};

// A hello that asks for `id`.
TestFrame Hello(std::int32_t id = -1);
// The hub's answer to it.
TestFrame HelloAnswer(std::int32_t id, std::int32_t status = 0);
// A frame of the hub's that tells why there is no answer.
TestFrame Status(std::int32_t receiver, std::int32_t sender, std::int32_t code, std::int32_t status);

std::string LittleEndian(std::uint32_t value, int bytes);
