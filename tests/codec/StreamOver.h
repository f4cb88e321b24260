// A stream together with the bytes that it reads or writes.
#pragma once

#include <cstdint>
#include <utility>

#include "codec/DataStream.h"
#include "tests/codec/PayloadBytes.h"

namespace codec_tests {

struct Reading {
  explicit Reading(Bytes payload)
      : bytes(std::move(payload)), channel(bytes.data(), static_cast<std::uint32_t>(bytes.size()), true) {}

  // What was not read yet, taken now.
  Bytes Rest() {
    Bytes rest;
    std::uint8_t byte = 0;
    while (channel.Read(&byte, 1) == 1) rest.push_back(byte);
    return rest;
  }

  Bytes bytes;
  cohesa::IpcBufferBuild channel;
  cohesa::DataStream stream{&channel};
};

struct Writing {
  explicit Writing(std::uint32_t capacity) : bytes(capacity), channel(bytes.data(), capacity, false) {}

  // What was written, found by filling up the rest.
  Bytes Written() {
    std::uint32_t room = 0;
    while (channel.Write("", 1) == 1) ++room;
    return {bytes.begin(), bytes.end() - room};
  }

  Bytes bytes;
  cohesa::IpcBufferBuild channel;
  cohesa::DataStream stream{&channel};
};

}  // namespace codec_tests
