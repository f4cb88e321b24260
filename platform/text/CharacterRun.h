// The fast way over text that is nearly always ASCII.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

// A negative character becomes a large number.
inline constexpr auto kIsAscii = [](auto character) { return static_cast<char32_t>(character) < 0x80; };

// Takes the characters for which `wanted` holds off the front of `text` and appends them to `out`. They must be ASCII,
// so that each is one character in every encoding.
template <class To, class From, class Predicate>
void MoveRun(std::basic_string_view<From>& text, std::basic_string<To>& out, Predicate wanted) {
  const auto end = std::find_if_not(text.begin(), text.end(), wanted);
  const auto count = static_cast<std::size_t>(end - text.begin());
  const std::size_t start = out.size();
  out.resize(start + count);
  std::transform(text.begin(), end, out.begin() + static_cast<std::ptrdiff_t>(start),
                 [](From character) { return static_cast<To>(character); });
  text.remove_prefix(count);
}

}  // namespace platform
