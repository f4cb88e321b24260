// What the tests of the IPC library share: a pipe name of their own, a hub on it, and the lines it logs.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "platform/ipc/IPCMessageClient.h"
#include "platform/ipc/IPCMessageHub.h"
#include "tests/platform/ipc/IpcTestSystem.h"
#include "tests/platform/ipc/RawPeer.h"
#include "tests/platform/ipc/TestFrame.h"

// Tries until `condition` holds; false when it does not within kPatience.
bool Eventually(const std::function<bool()>& condition);

class IpcTest : public ::testing::Test {
 protected:
  IpcTest();
  ~IpcTest() override;

  // Starts the hub of pipeName_.
  void StartHub(const HubLimits& limits = {});

  // The log lines so far that contain `part`.
  int LinesWith(const std::wstring& part);

  PrivatePipes pipes_;
  const std::wstring pipeName_ = pipes_.NewName();
  std::unique_ptr<IPCMessageHub> hub_;

 private:
  std::mutex linesMutex_;
  std::vector<std::wstring> lines_;
};
