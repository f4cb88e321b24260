#include "platform/logging/QxLogger.h"

#include <spdlog/pattern_formatter.h>
#include <spdlog/sinks/rotating_file_sink.h>
#include <spdlog/sinks/stdout_sinks.h>

#include <mutex>
#include <stdexcept>
#include <string_view>
#include <type_traits>
#include <utility>

#include "platform/logging/LogText.h"
#include "platform/text/WideText.h"

namespace {

constexpr std::size_t kMaxFileBytes = 10 * 1024 * 1024;
constexpr std::size_t kRotatedFiles = 5;

// One line end on every system: the log is the same file wherever it is read.
constexpr const char* kLineEnd = "\n";

void SetLineFormat(spdlog::sinks::sink& sink) {
  sink.set_formatter(std::make_unique<spdlog::pattern_formatter>("%Y-%m-%dT%H:%M:%S.%eZ %v",
                                                                 spdlog::pattern_time_type::utc, kLineEnd));
}

// spdlog's own type for file names: wide on Windows (see SPDLOG_WCHAR_FILENAMES), where narrow ones are not UTF-8.
template <class Name = spdlog::filename_t>
Name FileName(const std::string& utf8Path) {
  if constexpr (std::is_same_v<Name, std::wstring>) {
    return platform::ToWide(utf8Path);
  } else {
    return utf8Path;
  }
}

}  // namespace

struct QxLogger::State {
  std::mutex mutex;  // guards what follows; the sinks have no lock of their own
  std::unique_ptr<spdlog::sinks::sink> sink;
  Observer observer;
};

QxLogger::QxLogger() : state_(std::make_unique<State>()) { UseStandardError(); }

QxLogger::~QxLogger() = default;

QxLogger& QxLogger::GetInstance() {
  // Never destroyed, so that destructors of static objects may log in any order; nothing is lost by it, as every line
  // has been flushed.
  static auto* const logger = new QxLogger;
  return *logger;
}

void QxLogger::Log(QxLogLevel level, const std::wostringstream& line) try {
  const std::wstring_view text = line.view();
  std::string payload = std::to_string(static_cast<int>(level)) + ' ';
  payload.reserve(payload.size() + text.size() + text.size() / 8);
  platform::AppendLogText(payload, text);

  const std::lock_guard lock(state_->mutex);
  // The clock is read under the lock: the lines of a log are in the order of their times.
  const spdlog::details::log_msg message({}, spdlog::string_view_t(), spdlog::level::info, payload);
  if (state_->observer) {
    state_->observer(level, std::wstring(text));
  }
  state_->sink->log(message);
  state_->sink->flush();
} catch (...) {
  // There is nobody to tell, and no caller could do anything about it.
}

void QxLogger::OpenFile(const std::string& utf8Path) {
  std::unique_ptr<spdlog::sinks::sink> sink;
  try {
    sink = std::make_unique<spdlog::sinks::rotating_file_sink_st>(FileName<>(utf8Path), kMaxFileBytes, kRotatedFiles);
    SetLineFormat(*sink);
  } catch (const std::exception& error) {
    throw std::runtime_error("cannot open the log file " + utf8Path + ": " + error.what());
  }
  const std::lock_guard lock(state_->mutex);
  state_->sink.swap(sink);
}

void QxLogger::UseStandardError() {
  std::unique_ptr<spdlog::sinks::sink> sink = std::make_unique<spdlog::sinks::stderr_sink_st>();
  SetLineFormat(*sink);
  const std::lock_guard lock(state_->mutex);
  state_->sink.swap(sink);
}

QxLogger::Observer QxLogger::SetObserver(Observer observer) {
  const std::lock_guard lock(state_->mutex);
  return std::exchange(state_->observer, std::move(observer));
}
