// Reading all of a file or of standard input.
#pragma once

#include <cstddef>
#include <string>

namespace platform {

// The file's bytes as they are. `utf8Path` is a path of the running system. Throws std::runtime_error that names the
// path and the reason when it cannot be read or holds more than `limitBytes`; no more than that is ever held in memory.
std::string ReadWholeFile(const std::string& utf8Path, std::size_t limitBytes);

// The same for standard input, which PrepareStandardStreams must have prepared.
std::string ReadStandardInput(std::size_t limitBytes);

}  // namespace platform
