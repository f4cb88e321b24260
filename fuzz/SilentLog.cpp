// The log in place of the suite's: the lines of a fuzzer's failures go nowhere.
#include <utility>

#include "platform/logging/QxLogger.h"

struct QxLogger::State {
  Observer observer;
};

QxLogger::QxLogger() : state_(std::make_unique<State>()) {}

QxLogger::~QxLogger() = default;

QxLogger& QxLogger::GetInstance() {
  static auto* const logger = new QxLogger;
  return *logger;
}

void QxLogger::Log(QxLogLevel level, const std::wostringstream& line) {
  if (state_->observer) state_->observer(level, std::wstring(line.view()));
}

void QxLogger::OpenFile(const std::string&) {}

void QxLogger::UseStandardError() {}

QxLogger::Observer QxLogger::SetObserver(Observer observer) {
  return std::exchange(state_->observer, std::move(observer));
}
