// The request and the answer that every kind of client exchanges.
#pragma once

#include <cstddef>
#include <string>

namespace bench {

// The peer that is asked for: two keys of 64 bytes.
std::string PeerUdId();
std::string PeerSumId();

// The whole frames as they cross the socket, for the programs that know nothing of the protocol.
std::string RequestFrame();
std::string AnswerFrame();

}  // namespace bench
