#include "apps/recovery/UnwrittenPage.h"

#include <algorithm>
#include <cstdint>

#include "apps/recovery/BigEndian.h"

namespace KT {

namespace {

// 0 when the header is not there.
std::size_t PageSize(std::string_view bytes) {
  if (bytes.size() < 18) {
    return 0;
  }
  const std::uint64_t size = BigEndian(bytes.substr(16, 2));
  return size == 1 ? 65536 : static_cast<std::size_t>(size);
}

}  // namespace

std::optional<std::size_t> FirstUnwrittenPage(std::string_view bytes) {
  const std::size_t size = PageSize(bytes);
  for (std::size_t start = 0; size != 0 && start < bytes.size(); start += size) {
    const std::string_view page = bytes.substr(start, size);
    if (std::all_of(page.begin(), page.end(), [](char byte) { return byte == 0; })) {
      return start / size + 1;
    }
  }
  return std::nullopt;
}

}  // namespace KT
