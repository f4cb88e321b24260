// What the IPC tests need of the system that they run on.
#pragma once

#include <string>

// The pipe names that a test uses exist for it alone, and what they leave behind is gone with this object.
class PrivatePipes {
 public:
  PrivatePipes();
  ~PrivatePipes();
  PrivatePipes(const PrivatePipes&) = delete;
  PrivatePipes& operator=(const PrivatePipes&) = delete;

  // A name that was not used before.
  std::wstring NewName();

 private:
  std::string root_;  // POSIX: the machine root
};

// Says hello to the hub from a process of its own, asking for `wantedId`; the status of the answer. If `floodedId` is
// not 0, that process then sends requests with the code 8 to it until the hub ends its connection.
int StatusForForeignHello(const std::wstring& pipeName, int wantedId, int floodedId = 0);
