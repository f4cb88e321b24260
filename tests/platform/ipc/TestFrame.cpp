#include "tests/platform/ipc/TestFrame.h"

namespace {

std::string Int(std::int32_t value) { return LittleEndian(static_cast<std::uint32_t>(value), 4); }

std::uint32_t Take(const std::string& body, std::size_t& at, int bytes) {
  std::uint32_t value = 0;
  for (int i = 0; i < bytes; ++i) {
    value |= std::uint32_t{static_cast<unsigned char>(body.at(at++))} << (8 * i);
  }
  return value;
}

std::int32_t TakeInt(const std::string& body, std::size_t& at) { return static_cast<std::int32_t>(Take(body, at, 4)); }

}  // namespace

std::string LittleEndian(std::uint32_t value, int bytes) {
  std::string result;
  for (int i = 0; i < bytes; ++i) {
    result.push_back(static_cast<char>(value >> (8 * i) & 0xFF));
  }
  return result;
}

std::string TestFrame::Bytes() const {
  return Bytes(static_cast<std::uint32_t>(31 + name.size() + payload.size()), static_cast<std::uint16_t>(name.size()));
}

std::string TestFrame::Bytes(std::uint32_t length, std::uint16_t nameLength) const {
  return LittleEndian(length, 4) + Int(receiver) + Int(sender) + Int(code) + Int(replyCode) + Int(session) +
         Int(status) + LittleEndian(isLast, 1) + Int(extra) + LittleEndian(nameLength, 2) + name + payload;
}

std::optional<TestFrame> TestFrame::Parse(const std::string& body) {
  if (body.size() < 31) {
    return std::nullopt;
  }
  TestFrame frame;
  std::size_t at = 0;
  frame.receiver = TakeInt(body, at);
  frame.sender = TakeInt(body, at);
  frame.code = TakeInt(body, at);
  frame.replyCode = TakeInt(body, at);
  frame.session = TakeInt(body, at);
  frame.status = TakeInt(body, at);
  frame.isLast = static_cast<std::uint8_t>(Take(body, at, 1));
  frame.extra = TakeInt(body, at);
  const std::size_t nameLength = Take(body, at, 2);
  frame.name = body.substr(at, nameLength);
  frame.payload = body.substr(at + nameLength);
  return frame;
}

TestFrame Hello(std::int32_t id) { return {.sender = id, .code = 1, .extra = 1}; }

TestFrame HelloAnswer(std::int32_t id, std::int32_t status) {
  return {.receiver = id, .sender = 0, .code = 1, .status = status};
}

TestFrame Status(std::int32_t receiver, std::int32_t sender, std::int32_t code, std::int32_t status) {
  return {.receiver = receiver, .sender = sender, .code = code, .status = status};
}
