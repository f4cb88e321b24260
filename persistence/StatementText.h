#pragma once

#include <ios>
#include <sstream>

namespace KT {

// The stream that SQL is put together in. Without memory it throws, where streams by default swallow that and go on
// with a text that lacks its end.
class StatementText : public std::ostringstream {
 public:
  StatementText() { exceptions(std::ios::badbit); }
};

}  // namespace KT
