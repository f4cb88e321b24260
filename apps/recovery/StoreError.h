// Why a database file cannot be judged or mended.
#pragma once

#include <stdexcept>
#include <string>

#include "platform/OperatingSystem.h"

namespace KT {

// Thrown inside the room; its functions for others return the text instead. The text names the file, what is wrong with
// it and what to do.
class StoreError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// What an error number of the operating system means for a file, for example "another program has it open".
std::string MeaningOf(platform::Dword error);

}  // namespace KT
