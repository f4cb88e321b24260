// The store's steps in plain calls of SQLite's C interface, as a C program would make them: no engines, no log, no
// wrapper. What the store is measured against.
#pragma once

#include <sqlite3.h>

#include <functional>
#include <string>

namespace bench {

// One table in memory, mirrored to a file. Any error ends the program with SQLite's text.
class PlainStore {
 public:
  // `file` is a path of the running system; it is not read.
  PlainStore(std::string file, const char* createText);
  ~PlainStore();
  PlainStore(const PlainStore&) = delete;
  PlainStore& operator=(const PlainStore&) = delete;

  // Prepares `text`, lets `bind` fill its parameters, runs it to its end with `row` called for every row, and finalizes
  // it.
  using Visit = std::function<void(sqlite3_stmt*)>;
  void Run(const std::string& text, const Visit& bind = {}, const Visit& row = {});

  // As the store saves: inside an idle transaction the file, if there is one, is renamed aside, the memory database is
  // copied into a new file in one step, and after the commit the old file is deleted. The new file's journal and its
  // synchronous mode are SQLite's defaults, the same build's as the store's.
  void Save();

 private:
  void Check(int result, sqlite3* database) const;
  void CopyToFile();

  const std::string file_;
  const std::string aside_;
  sqlite3* memory_ = nullptr;
};

}  // namespace bench
