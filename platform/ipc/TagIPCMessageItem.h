// One message of the suite's IPC library, as callbacks receive it and PostIPCMessage takes it.
#pragma once

#include <string>

// The order of the fields is the library's own. What each means on the pipe: docs/ipc.md.
struct TagIPCMessageItem {
  std::string name;         // 1: free text in UTF-8, at most 65,535 bytes
  int receiver = 0;         // 2: id of the client it is for; 0 is the hub
  int sender = -1;          // 3: id of the client it came from; set by the hub, ignored on the way out
  int code = 0;             // 4: picks the receiver's callback
  int replyCode = -1;       // 5: the code that the answer must carry; -1 where none is expected
  int session = -1;         // 6: always -1
  int status = 0;           // 7: 0, or why there is no answer (IpcStatus)
  int length = 0;           // 8: payload length in bytes
  char* payload = nullptr;  // 9: not owned; in a callback valid until it returns
  bool isLast = true;       // 10
  int extra = 0;            // 11: 0, or the protocol version in a hello
};

// Field 7 of a message that the IPC library made itself. Such a message has no payload.
enum class IpcStatus : int {
  Answer = 0,              // a service's own answer
  NoSuchReceiver = 1,      // no client has the receiver's id
  NoCallback = 2,          // the receiver has no callback for the code
  UnsendableAnswer = 3,    // the payload had a negative length or was too large for a frame
  IdTaken = 4,             // hello: the id wanted is in use
  IdReserved = 5,          // hello: the id wanted is for services in the hub's own process
  UnsupportedVersion = 6,  // hello: unknown protocol version
};
