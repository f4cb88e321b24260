#pragma once

namespace support {

// How long something that fails goes on failing.
enum class FaultSpan {
  Once,
  FromThenOn,  // that call and every later one of its kind
};

}  // namespace support
