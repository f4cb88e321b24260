// Where exceptions end: the operations of the engines report failure by their result.
#pragma once

#include <utility>

namespace KT {

// Logs `message` and the text of the exception being handled ("Unknown exception" when it has none) as a failure of
// `function`. Only inside a catch block. Throws nothing: what cannot be logged for want of memory stays unlogged.
void LogCaughtException(const char* message, const char* function) noexcept;

// The result of `body`, or false after logging when it throws.
template <class Body>
bool Guarded(const char* message, const char* function, Body&& body) {
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    LogCaughtException(message, function);
    return false;
  }
}

}  // namespace KT
