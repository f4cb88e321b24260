#include "platform/program/ProgramArguments.h"

namespace platform {

std::vector<std::string> ProgramArguments(int argc, const char* const* argv) { return {argv, argv + argc}; }

}  // namespace platform
