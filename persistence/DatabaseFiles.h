// Where the database files lie and how they are recognised.
#pragma once

#include <string>

namespace KT {

// Below the console user's profile.
inline constexpr const wchar_t* kDatabaseFolder = L"\\Orvnta\\DeviceMgr\\";

// Each engine puts its own prefix before it. The bare name is no engine's file: it is what IsDeviceDbExist looks for.
inline constexpr const char* kDatabaseFileName = "G12NJ9DS39D.db";

// Whether something other than a directory lies at `path`.
bool FileExists(const std::wstring& path);

}  // namespace KT
