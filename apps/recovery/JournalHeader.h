// What SQLite's rollback journal says in its first bytes.
#pragma once

#include <string_view>

namespace KT {

enum class JournalKind {
  None,   // there is no journal
  Fresh,  // its header is valid and says that the database had 0 pages: applying it would empty the database
  Other,  // anything else, a journal of 0 bytes included
};

// The kind of a journal that is there, from its content. The header is fresh where SQLite could take it for valid: the
// magic number, sector and page sizes in their ranges, and no page before the change.
JournalKind KindOfJournal(std::string_view bytes);

}  // namespace KT
