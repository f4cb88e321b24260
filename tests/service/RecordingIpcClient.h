// What the recording IPCMessageClient saw: the service's tests link it in place of the suite's, as a vendor would link
// his own, so that every field of a posted message can be looked at.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/ipc/IPCMessageClient.h"

namespace support {

struct PostedItem {
  TagIPCMessageItem item;
  std::string payload;  // a copy of the bytes, where length is positive
};

struct IpcRecord {
  int clientId = 0;
  bool hubMustExist = true;
  bool reserved = true;
  std::wstring pipeName;
  std::vector<int> registeredCodes;  // in order, repetitions included
  std::vector<PostedItem> posted;
  bool postSucceeds = true;
  std::function<void()> onUnregister;  // runs inside UnRegisterMessageCallbackAll
  int unregistrations = 0;

  // Starts anew; the record is the process's only one.
  static IpcRecord& Reset();
  static IpcRecord& Get();
};

// Calls the callback registered for item.code, as the library would. False when there is none.
bool Deliver(TagIPCMessageItem& item);

}  // namespace support
