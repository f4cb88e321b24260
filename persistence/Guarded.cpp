#include "persistence/Guarded.h"

#include <exception>
#include <string>

#include "platform/logging/LogLine.h"

namespace KT {

namespace {

std::string TextOfCaughtException() {
  std::string text;
  try {
    throw;
  } catch (const std::exception& exception) {
    text = exception.what();
  } catch (...) {
    // Something that is no exception class has no text.
  }
  return text.empty() ? "Unknown exception" : text;
}

}  // namespace

void LogCaughtException(const char* message, const char* function) noexcept {
  try {
    platform::LogFailure(function, message, TextOfCaughtException());
  } catch (...) {
    // Out of memory: the caller's result still tells of the failure.
  }
}

bool IsOpen(const DbContent& content, const char* function) {
  if (content.dbContentPtr == nullptr) {
    platform::LogFailure(function, "[KTData] dbContentPtr is nullptr.");
    return false;
  }
  return true;
}

}  // namespace KT
