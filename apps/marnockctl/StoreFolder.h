// Where the service's database files lie on this machine.
#pragma once

#include <string>

namespace KT {

// The console user's database folder: a Windows path with a backslash at the end. Throws StoreError when nobody can say
// who that user is.
std::wstring StoreFolder();

}  // namespace KT
