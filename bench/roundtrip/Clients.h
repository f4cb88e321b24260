// The three kinds of clients.
#pragma once

#include <memory>
#include <string>

#include "bench/roundtrip/Load.h"

namespace bench {

// A socket of its own to the ping-pong server: writes the request frame's bytes, reads the answer frame's.
std::unique_ptr<LoadClient> MakeRawClient(const std::string& socketPath, ClientLog& log);

// An IPCMessageClient: its callback for the answer sends the next request. Everything happens on the library's thread.
std::unique_ptr<LoadClient> MakeCallbackClient(ClientLog& log);

// A RegistryClient: a thread that calls GetPeerDevice and is woken by the library's when the answer is there.
std::unique_ptr<LoadClient> MakeTypedClient(ClientLog& log);

// Ends the benchmark: nothing that follows would mean anything.
[[noreturn]] void GiveUp(const std::string& why);

}  // namespace bench
