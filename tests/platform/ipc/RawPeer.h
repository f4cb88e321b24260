// A client that a test plays.
#pragma once

#include <cstdint>
#include <string>

#include "tests/platform/ipc/RawConnection.h"

class RawPeer : public RawConnection {
 public:
  // Connects, trying again for a while where the hub is busy. Fails the test when it cannot.
  explicit RawPeer(const std::wstring& pipeName);

  // Says hello and returns the id granted, or -1.
  std::int32_t SayHello(std::int32_t wanted = -1);
};
