// A client that breaks the protocol.
#pragma once

namespace e2e {

// Connects, says hello, sends a frame that no hub may let pass and waits until the connection is closed. `kind`: any
// number; another one, another way to be wrong. Tries again for a while where the hub has no room. True when the hub
// granted an id and then closed the connection.
bool SendBadFrame(int kind);

}  // namespace e2e
