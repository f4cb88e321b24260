// What the end-to-end tests do to a running host besides calling marnockctl. Each returns the program's exit status: 0
// when every answer was right.
#pragma once

namespace e2e {

// `clients` connections, numbered from `first`, send `requests` requests between them, of all kinds and several at a
// time. Every request must get exactly one answer, the right one. Loads that run at once need different numbers.
int Load(int first, int clients, int requests);

// Each of `clients` connections sets a peer of its own to `first`, `first` + 1 and so on until the host goes away, and
// prints "<udId> <last number answered, or 0> <last number sent>". 1 when no connection got an answer.
int CountUntilLost(int clients, int first);

// `connections` at once, of which no more than `places` find room: those stay until that many are there. Each sends one
// request in the end.
int Crowd(int connections, int places);

// `clients` at once, numbered from 0, send `requests` requests between them, of all kinds. Each client's connection
// ends every fifty requests, and another one, which breaks the protocol, takes its place for a moment. Prints
// "<n> right, <n> bad frames, <n> faults".
int Soak(int clients, int requests);

// One connection, which is greeted, prints "idle" and then does nothing until the standard input ends.
int Idle();

// Sends one request with the payload given in hexadecimal digits (may be empty) and prints "status <n>" and the
// payload of what came back, or "no answer".
int Send(int code, const char* payloadHex);

}  // namespace e2e
