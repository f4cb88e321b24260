// Every SQL statement that runs.
#pragma once

#include <functional>
#include <string>

namespace support {

// Calls `listener` with the text of each statement as it begins to run, parameters unfilled, on every connection that
// is opened while the trace lives; those connections must be closed before it goes. One trace at a time.
class SqlTrace {
 public:
  explicit SqlTrace(std::function<void(const std::string& text)> listener);
  ~SqlTrace();

  SqlTrace(const SqlTrace&) = delete;
  SqlTrace& operator=(const SqlTrace&) = delete;
};

}  // namespace support
