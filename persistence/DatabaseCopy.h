// Copying a whole database between memory and its disk file.
//
// SQLite::Database::backup would be the obvious way, but it drops a BUSY or LOCKED answer and then reports success
// without having copied anything. These copy everything or throw SQLite::Exception with SQLite's text.
#pragma once

#include <string>

namespace SQLite {
class Database;
}

namespace KT {

// How long a copy waits for another program's lock on the file.
inline constexpr int kFileBusyTimeoutMilliseconds = 500;

// Replaces the content of the file by that of `memory`; the file is made when there is none. When it returns, the
// content is on the disk. When it throws, SQLite has rolled the file back as far as the disk let it. `memory` may be in
// a transaction that has not written yet. `filePath` is a Windows path in UTF-8.
void SaveToFile(SQLite::Database& memory, const std::string& filePath);

// Replaces the content of `memory` by that of the file. A file that does not exist is made, empty. After a throw
// `memory` is as it was or empty.
void LoadFromFile(SQLite::Database& memory, const std::string& filePath);

}  // namespace KT
