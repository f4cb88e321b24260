// The frame of every engine operation: it needs an open database, and reports failure by its result alone.
#pragma once

#include <utility>

#include "persistence/DbContent.h"

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

// Whether the database is open; logs as a failure of `function` when it is not.
bool IsOpen(const DbContent& content, const char* function);

// The result of `body(database)` on the open database of `content`, guarded as above; false after logging when there
// is none.
template <class Body>
bool WithDatabase(DbContent& content, const char* message, const char* function, Body&& body) {
  return IsOpen(content, function) &&
         Guarded(message, function, [&] { return std::forward<Body>(body)(*content.dbContentPtr); });
}

}  // namespace KT
