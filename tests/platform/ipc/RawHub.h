// A hub that a test plays, for one client at a time.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "tests/platform/ipc/RawConnection.h"

class RawHub : public RawConnection {
 public:
  // Listens from now on.
  explicit RawHub(const std::wstring& pipeName);

  // Waits for a client, which takes the place of the one before, if any. Fails the test when none comes in time.
  void Accept();

  // Takes the client's hello and answers it; the hello.
  std::optional<TestFrame> Greet(std::int32_t grantedId, std::int32_t status = 0);

 private:
  std::unique_ptr<platform::ipc::PipeClaim> claim_;
  std::unique_ptr<platform::ipc::PipeListener> listener_;
};
