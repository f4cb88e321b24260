#include "persistence/DatabaseFiles.h"

#include "platform/OperatingSystem.h"

namespace KT {

bool FileExists(const std::wstring& path) {
  const platform::Dword attributes = platform::OperatingSystem::Get().GetFileAttributesW(path);
  return attributes != platform::kInvalidFileAttributes && (attributes & platform::kFileAttributeDirectory) == 0;
}

}  // namespace KT
