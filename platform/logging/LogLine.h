// How every log line of Marnock is put together: the parts of the message, then the function's qualified name in
// parentheses.
#pragma once

#include <concepts>
#include <sstream>
#include <string>
#include <utility>

#include "platform/logging/QxLogger.h"
#include "platform/text/PlenixBase.h"

namespace platform {

namespace internal {

// Whole numbers, as opposed to characters and truth values, which a stream would write in ways of its own.
template <class T>
concept LogNumber = std::integral<T> && !std::same_as<T, bool> && sizeof(T) >= sizeof(int) &&
                    !std::same_as<T, wchar_t> && !std::same_as<T, char32_t>;

inline void AppendPart(std::wstring& line, const std::wstring& text) { line += text; }
// Values and what() texts are UTF-8 and may hold anything; taken byte by byte they would come out as rubbish.
inline void AppendPart(std::wstring& line, const std::string& utf8) { line += PlenixBase::UTF8ToUnicode(utf8); }
// Inserted into a stream a null pointer would silence it for good.
inline void AppendPart(std::wstring& line, const char* utf8) {
  AppendPart(line, std::string(utf8 == nullptr ? "(null)" : utf8));
}
template <LogNumber Number>
void AppendPart(std::wstring& line, Number value) {
  line += std::to_wstring(value);
}

}  // namespace internal

// Logs `parts` followed by "(function)". `function` is the qualified name as a literal, for example
// "KT::Marnock::Init". Narrow text is UTF-8 (ill-formed bytes become U+FFFD), a null pointer is logged as (null). A
// line for which there is no memory is dropped: what the program does never hangs on what it says of it.
template <class... Parts>
void WriteLog(QxLogLevel level, const char* function, const Parts&... parts) noexcept try {
  std::wstring text;
  (internal::AppendPart(text, parts), ...);
  internal::AppendPart(text, "(");
  internal::AppendPart(text, function);
  internal::AppendPart(text, ")");
  // Filled at once: insertions part by part cost more than all the rest of a line.
  const std::wostringstream line(std::move(text));
  QxLogger::GetInstance().Log(level, line);
} catch (...) {
  // As in the logger itself, there is nobody to tell.
}

template <class... Parts>
void LogProgress(const char* function, const Parts&... parts) noexcept {
  WriteLog(QxLogLevel::Progress, function, parts...);
}

template <class... Parts>
void LogFailure(const char* function, const Parts&... parts) noexcept {
  WriteLog(QxLogLevel::Failure, function, parts...);
}

}  // namespace platform
