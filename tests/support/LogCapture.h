// The log lines that a piece of code writes.
#pragma once

#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "platform/logging/QxLogger.h"
#include "platform/text/PlenixBase.h"

namespace support {

// Collects every line that is logged while it lives, from any thread.
class LogCapture {
 public:
  LogCapture() {
    previous_ = QxLogger::GetInstance().SetObserver([this](QxLogLevel level, const std::wstring& text) {
      const std::lock_guard lock(mutex_);
      lines_.push_back(std::to_string(static_cast<int>(level)) + " " + PlenixBase::UnicodeToUTF8(text));
    });
  }
  ~LogCapture() { QxLogger::GetInstance().SetObserver(std::move(previous_)); }

  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

  // Level, a blank and the text in UTF-8, for example "3 [KTData] Init Marnock finished.(KT::Marnock::Init)".
  std::vector<std::string> Lines() const {
    const std::lock_guard lock(mutex_);
    return lines_;
  }

  // The lines so far, which are then forgotten.
  std::vector<std::string> Take() {
    const std::lock_guard lock(mutex_);
    return std::exchange(lines_, {});
  }

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> lines_;
  QxLogger::Observer previous_;
};

}  // namespace support
