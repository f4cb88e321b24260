// A service with a store of its own, whose requests come from and whose replies go to the test.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "codec/MessageParcel.h"
#include "codec/messages/EncodedSize.h"
#include "service/Marnock.h"
#include "tests/service/MarnockTestAccess.h"
#include "tests/service/RecordingIpcClient.h"
#include "tests/support/ConsoleProfile.h"
#include "tests/support/FakeOperatingSystem.h"
#include "tests/support/LogCapture.h"

namespace support {

class ServiceFixture : public ::testing::Test {
 protected:
  ServiceFixture();
  ~ServiceFixture() override;

  // The bytes of a message, from a parcel of exactly its size.
  template <class Message>
  static std::string Encode(Message message) {
    const auto size = static_cast<std::uint32_t>(KT::EncodedSize(message));
    const auto parcel = std::make_shared<KT::MessageParcel>(size, nullptr, true);
    message.Serialize(parcel);
    return {reinterpret_cast<const char*>(parcel->GetBuffer()), size};
  }

  template <class Message>
  static Message Decode(std::string payload) {
    Message message;
    message.Deserialize(std::make_shared<KT::MessageParcel>(static_cast<std::uint32_t>(payload.size()),
                                                            reinterpret_cast<std::uint8_t*>(payload.data()), false));
    return message;
  }

  // Delivers `payload` under `code` as from client 7, which wants its answer under code 42.
  void Deliver(int code, std::string payload);

  // Sends a request and returns its answer, of which there must be exactly one.
  template <class Request>
  typename Request::Response Ask(const Request& request) {
    ipc.posted.clear();
    Deliver(Request::kCode, Encode(request));
    EXPECT_EQ(ipc.posted.size(), 1U);
    return ipc.posted.empty() ? typename Request::Response()
                              : Decode<typename Request::Response>(ipc.posted[0].payload);
  }

  // Destroys the service and, with Start, makes another on the same files.
  void Stop();
  void Start();

  ConsoleProfile profile;
  FakeOperatingSystem system;
  LogCapture log;
  IpcRecord& ipc;
  KT::Marnock* service = nullptr;
};

}  // namespace support
