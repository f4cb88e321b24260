#include "apps/recovery/UnwrittenPage.h"

#include <algorithm>

#include "apps/recovery/BigEndian.h"

namespace KT {

std::optional<std::size_t> FirstUnwrittenPage(std::string_view bytes) {
  const std::size_t size = StatedPageBytes(bytes);
  for (std::size_t start = 0; size != 0 && start < bytes.size(); start += size) {
    const std::string_view page = bytes.substr(start, size);
    if (std::all_of(page.begin(), page.end(), [](char byte) { return byte == 0; })) {
      return start / size + 1;
    }
  }
  return std::nullopt;
}

}  // namespace KT
