// e2e_client COMMAND ARGUMENT...: see Commands.h.
#include <cstdlib>
#include <cstring>
#include <iostream>

#include "platform/program/StandardStreams.h"
#include "tests/e2e/client/Commands.h"

namespace {

int Run(int count, char** arguments) {
  const auto is = [&](const char* name, int parameters) {
    return count == 2 + parameters && std::strcmp(arguments[1], name) == 0;
  };
  const auto number = [&](int place) { return static_cast<int>(std::strtol(arguments[place], nullptr, 0)); };
  if (is("load", 3)) return e2e::Load(number(2), number(3), number(4));
  if (is("count", 2)) return e2e::CountUntilLost(number(2), number(3));
  if (is("crowd", 2)) return e2e::Crowd(number(2), number(3));
  if (is("soak", 2)) return e2e::Soak(number(2), number(3));
  if (is("idle", 0)) return e2e::Idle();
  if (is("send", 2)) return e2e::Send(number(2), arguments[3]);
  std::cerr << "usage: e2e_client load FIRST CLIENTS REQUESTS | count CLIENTS FIRST | crowd CONNECTIONS PLACES | "
               "soak CLIENTS REQUESTS | idle | send CODE HEX\n";
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  platform::PrepareStandardStreams();
  return Run(argc, argv);
}
