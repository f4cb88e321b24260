// The three database files of the service, as its table engines name and lay them out.
#pragma once

#include <string>
#include <vector>

namespace KT {

struct StoreFile {
  const char* name;                  // for people: "peer", "current" or "trusted"
  const char* fileName;              // in the database folder
  const char* tableName;             // of the one table that the service uses
  std::vector<std::string> columns;  // every column that the table must have, in its order
};

// In the order in which the service loads them.
const std::vector<StoreFile>& StoreFiles();

}  // namespace KT
