// Whose profile the databases belong to: the user at the physical console, and the folders under that user's profile.
#pragma once

#include <string>

namespace KT::Utils {

// The console user in SAM-compatible form (MACHINE\account), or an empty string when the lookup fails (logged). The
// thread acts as that user while it asks. With nobody signed in at the console, or without the privilege to get the
// user's token, the answer is the account that the process runs as.
std::wstring GetCurrentUserName();

// "C:\Users\" + the console user's account + `subPath`, which is expected to begin with a backslash; an empty string
// when the user is not known (logged). Nothing is added between the parts and no folder needs to exist.
std::wstring GetCurrUserDefinePath(std::wstring subPath);

// Makes `path` and every missing level above it, and lets its owner do everything and others read. An existing path is
// left as it is. False (logged) only when nothing was there and nothing was made, without an error; an error of the
// file system is thrown as std::filesystem::filesystem_error.
bool CreateDir(const std::wstring& path);

}  // namespace KT::Utils
