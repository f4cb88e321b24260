// What the next start of the host would find on the disk.
#pragma once

#include <string>
#include <vector>

#include "tests/support/ConsoleProfile.h"

namespace faults {

// Copies a database folder as it is now, mends the copy as the host does at its start, and looks into it. Where
// nothing lies beside the database files there is nothing to mend, and the file is looked into where it is.
class RestartedHost {
 public:
  RestartedHost();

  // The rows that `sql` yields, each with its columns joined by "|", from the mended copy of the file of that name. The
  // files must be such that nothing was lost; a file that was damaged and set aside, or a repair that refuses, is a
  // failure of the test. Empty when there is no file.
  std::vector<std::string> Rows(const support::ConsoleProfile& original, const std::string& file,
                                const std::string& sql);

 private:
  void CopyFolderOf(const support::ConsoleProfile& original) const;
  void Repair() const;

  const support::ConsoleProfile copy_;
};

}  // namespace faults
