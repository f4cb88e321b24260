#include <windows.h>

#include <initializer_list>
#include <system_error>

#include "platform/program/ProcessHardening.h"

namespace platform {

namespace {

void SearchDllsInSafePlacesOnly() {
  // The empty folder takes the current directory out of the search of old-style LoadLibrary calls as well.
  if (SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_DEFAULT_DIRS) == FALSE || SetDllDirectoryW(L"") == FALSE) {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(),
                            "restricting the search for DLLs");
  }
}

// A stream that is absent or a console of old has nothing to be inherited.
void KeepStandardStreams() {
  for (const DWORD stream : {STD_INPUT_HANDLE, STD_OUTPUT_HANDLE, STD_ERROR_HANDLE}) {
    const HANDLE handle = GetStdHandle(stream);
    if (handle != nullptr && handle != INVALID_HANDLE_VALUE) {
      SetHandleInformation(handle, HANDLE_FLAG_INHERIT, 0);
    }
  }
}

}  // namespace

void HardenProcess() {
  SearchDllsInSafePlacesOnly();
  KeepStandardStreams();
}

}  // namespace platform
