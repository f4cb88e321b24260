// What a call throws.
#pragma once

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace support {

// The text of the std::runtime_error that `call` throws; a fault of the test, and empty, when it throws none.
template <class Call>
std::string ErrorOf(const Call& call) {
  try {
    call();
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  ADD_FAILURE() << "nothing was thrown";
  return {};
}

}  // namespace support
