// The eleven requests under one set of operations, for a sweep that is the same for each.
#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace faults {

enum class Purpose { Set, Delete, Get, List };

// A request about the row of kCaseKey, which holds the value that the test set last.
struct RequestCase {
  const char* name;  // of the handler and of the store's operation
  int code;
  Purpose purpose;
  int failureResult;
  const char* failure;  // text of the store's log line
  const char* file;
  const char* rows;  // selects the values of that key from the file, the newest last

  // The payload of the request. Only a Set uses `value`.
  std::function<std::string(const std::string& value)> payload;
  std::function<int(const std::string& reply)> result;
  // The value in the answer to a Get or a List, empty where there is none.
  std::function<std::string(const std::string& reply)> value;

  // The codes with which the same row is set and read.
  int setCode;
  int getCode;
};

// For GoogleTest.
inline void PrintTo(const RequestCase& request, std::ostream* stream) { *stream << request.name; }

inline constexpr const char* kCaseKey = "key";

const std::vector<RequestCase>& RequestCases();
const RequestCase& RequestCaseOf(int code);

}  // namespace faults
