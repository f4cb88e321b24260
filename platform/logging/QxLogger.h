// The suite's logging library: one process-wide logger that takes finished lines.
#pragma once

#include <functional>
#include <memory>
#include <sstream>
#include <string>

#include "assistant_export.h"

// Severity of a line. The numbers are the suite's and appear in the log as they are.
enum class QxLogLevel : int {
  Progress = 3,  // progress and results
  Failure = 4,
};

// Lines go to standard error until OpenFile. Each is written whole and flushed before Log returns:
//   2026-11-21T01:23:45.678Z 3 [KTData] Init Marnock finished.(KT::Marnock::Init)
// UTC time, level, text in UTF-8, \n at the end on every system. Control characters are written escaped (\n, \x1b;
// LogText.h has the rest) and ill-formed text as U+FFFD, so that no content can forge or break a line. All operations
// may be called from any thread and throw nothing but what is named at OpenFile; a line that cannot be written is
// dropped.
class ASSISTANT_EXPORT QxLogger {
 public:
  // A copy of each line as it was logged, before escaping. Runs on the logging thread, one line at a time, and must not
  // use the logger itself or throw.
  using Observer = std::function<void(QxLogLevel level, const std::wstring& text)>;

  static QxLogger& GetInstance();

  // Logs what the stream holds as one line.
  void Log(QxLogLevel level, const std::wostringstream& line);

  // Writes to a file from now on: appended to, rotated to FILE.1 ... FILE.5 (FILE.log to FILE.1.log and so on) when it
  // reaches 10 MiB. `utf8Path` is a path of the running system. Throws std::runtime_error that names the path when it
  // cannot be opened; lines then go where they went before.
  void OpenFile(const std::string& utf8Path);

  // Closes the file, if any, and writes to standard error from now on.
  void UseStandardError();

  // Sets the observer (empty for none) and returns the one before.
  Observer SetObserver(Observer observer);

  QxLogger(const QxLogger&) = delete;
  QxLogger& operator=(const QxLogger&) = delete;

 private:
  struct State;
  QxLogger();
  ~QxLogger();
  std::unique_ptr<State> state_;
};
