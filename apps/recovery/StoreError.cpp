#include "apps/recovery/StoreError.h"

namespace KT {

std::string MeaningOf(platform::Dword error) {
  switch (error) {
    case platform::kErrorAccessDenied:
      return "access is denied, or a folder stands in its place";
    case platform::kErrorSharingViolation:
    case platform::kErrorLockViolation:
      return "another program has it open";
    case platform::kErrorAlreadyExists:
      return "the new name is taken";
    case platform::kErrorFileTooLarge:
      return "it is larger than any database of this service";
    default:
      return "the system reports error " + std::to_string(error);
  }
}

}  // namespace KT
