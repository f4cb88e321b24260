#include <iostream>

#include "apps/marnockctl/Commands.h"
#include "platform/program/ProgramArguments.h"
#include "platform/program/StandardStreams.h"

int main(int argc, char** argv) {
  platform::PrepareStandardStreams();
  return static_cast<int>(KT::RunMarnockctl(platform::ProgramArguments(argc, argv), std::cout, std::cerr));
}
