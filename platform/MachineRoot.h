// POSIX port only: the folder that stands for the Windows machine.
#pragma once

#include <string>

namespace platform {

// $MARNOCK_ROOT, else $XDG_DATA_HOME/marnock, else ~/.local/share/marnock; without a trailing slash. The home folder is
// $HOME, or what the user database says where that is empty. Read anew at each call, so that tests can move it.
std::string MachineRoot();

// Where a Windows path (UTF-8) lies in it: C:\a\b is MachineRoot() + "/C/a/b". An empty path stays empty: it names
// nothing on either system.
std::string PathInMachineRoot(const std::string& windowsPath);

}  // namespace platform
