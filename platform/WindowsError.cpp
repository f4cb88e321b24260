#include "platform/WindowsError.h"

#include <algorithm>
#include <cerrno>
#include <iterator>

namespace platform {

namespace {

struct Pair {
  int posix;
  Dword windows;
};

constexpr Pair kPairs[] = {
    {ENOENT, kErrorFileNotFound},
    {ENOTDIR, kErrorPathNotFound},
    {EMFILE, 4},  // ERROR_TOO_MANY_OPEN_FILES
    {ENFILE, 4},
    {EACCES, kErrorAccessDenied},
    {EPERM, kErrorAccessDenied},
    {EISDIR, kErrorAccessDenied},
    {EBADF, kErrorInvalidHandle},
    {ENOMEM, 8},  // ERROR_NOT_ENOUGH_MEMORY
    {EXDEV, 17},  // ERROR_NOT_SAME_DEVICE
    {EROFS, 19},  // ERROR_WRITE_PROTECT
    {EBUSY, kErrorSharingViolation},
    {ETXTBSY, kErrorSharingViolation},
    {EINVAL, 87},   // ERROR_INVALID_PARAMETER
    {ENOSPC, 112},  // ERROR_DISK_FULL
    {EDQUOT, 112},
    {ENOTEMPTY, 145},  // ERROR_DIR_NOT_EMPTY
    {EEXIST, kErrorAlreadyExists},
    {EFBIG, kErrorFileTooLarge},
    {ENAMETOOLONG, 206},  // ERROR_FILENAME_EXCED_RANGE
    {EIO, 1117},          // ERROR_IO_DEVICE
    {ELOOP, 1921},        // ERROR_CANT_RESOLVE_FILENAME
};

}  // namespace

Dword WindowsErrorOf(int errnoValue) {
  const auto* const pair =
      std::find_if(std::begin(kPairs), std::end(kPairs), [=](const Pair& each) { return each.posix == errnoValue; });
  return pair == std::end(kPairs) ? kErrorGeneralFailure : pair->windows;
}

}  // namespace platform
