// How every log line of Marnock is put together: the parts of the message, then the function's qualified name in
// parentheses.
#pragma once

#include <sstream>
#include <string>
#include <string_view>

#include "platform/logging/QxLogger.h"
#include "platform/text/PlenixBase.h"

namespace platform {

namespace internal {

// Literals of the source are ASCII: the stream widens them itself.
inline void AppendPart(std::wostringstream& line, const char* literal) { line << literal; }
inline void AppendPart(std::wostringstream& line, const std::wstring& text) { line << text; }
// Values are UTF-8 and may hold anything; inserted byte by byte they would come out as rubbish or stop the stream.
inline void AppendPart(std::wostringstream& line, const std::string& utf8) { line << PlenixBase::UTF8ToUnicode(utf8); }
inline void AppendPart(std::wostringstream& line, int value) { line << value; }
inline void AppendPart(std::wostringstream& line, unsigned value) { line << value; }

}  // namespace internal

// Logs `parts` followed by "(function)". `function` is the qualified name as a literal, for example
// "KT::Marnock::Init". Literals are ASCII, std::string values UTF-8 (ill-formed bytes become U+FFFD).
template <class... Parts>
void WriteLog(QxLogLevel level, const char* function, const Parts&... parts) {
  std::wostringstream line;
  (internal::AppendPart(line, parts), ...);
  line << "(" << function << ")";
  QxLogger::GetInstance().Log(level, line);
}

template <class... Parts>
void LogProgress(const char* function, const Parts&... parts) {
  WriteLog(QxLogLevel::Progress, function, parts...);
}

template <class... Parts>
void LogFailure(const char* function, const Parts&... parts) {
  WriteLog(QxLogLevel::Failure, function, parts...);
}

}  // namespace platform
