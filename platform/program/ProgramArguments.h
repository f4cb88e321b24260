// A program's arguments in one encoding on every system.
#pragma once

#include <string>
#include <vector>

namespace platform {

// The arguments in UTF-8, the program's own name first. Pass what main got. Windows: taken from the command line
// instead, because main's are in a code page that cannot spell every name. POSIX: the bytes as they were given.
std::vector<std::string> ProgramArguments(int argc, const char* const* argv);

}  // namespace platform
