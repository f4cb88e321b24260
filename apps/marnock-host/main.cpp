#include <exception>
#include <iostream>

#include "apps/marnock-host/Host.h"
#include "apps/marnock-host/HostOptions.h"
#include "platform/MemoryPool.h"
#include "platform/program/ProcessHardening.h"
#include "platform/program/ProgramArguments.h"
#include "platform/program/RunProgram.h"
#include "platform/program/StandardStreams.h"

int main(int argc, char** argv) {
  platform::PrepareStandardStreams();
  try {
    platform::HardenProcess();
    platform::UseOneMemoryPool();
  } catch (const std::exception& error) {
    std::cerr << "marnock-host: " << error.what() << std::endl;
    return 1;
  }
  int status = 0;
  const auto options = KT::ParseHostOptions(platform::ProgramArguments(argc, argv), std::cout, std::cerr, status);
  if (!options.has_value()) {
    return status;
  }
  return platform::RunProgram(
      [&](platform::StopSignal& stop) { return KT::RunHost(*options, stop, std::cout, std::cerr); });
}
