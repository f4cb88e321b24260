// Pages that a power cut kept from the disk.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace KT {

// The number, from 1, of the first page of a database file that holds nothing but zeros: what a file system shows of
// one that was written and never synced. SQLite's integrity_check does not look at what a long text holds, and takes
// such a page for a part of one. Empty when there is none or the bytes do not begin as a database does.
std::optional<std::size_t> FirstUnwrittenPage(std::string_view bytes);

}  // namespace KT
