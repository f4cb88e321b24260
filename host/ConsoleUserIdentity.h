// Acting as the user who is signed in at the physical console.
#pragma once

#include "platform/OperatingSystem.h"

namespace KT::Utils {

// While it lives, the calling thread acts as the console user, where that user's token can be had; otherwise nothing
// changes. Ends on the thread that it began on.
class ConsoleUserIdentity {
 public:
  explicit ConsoleUserIdentity(platform::OperatingSystem& system);
  ~ConsoleUserIdentity();

  ConsoleUserIdentity(const ConsoleUserIdentity&) = delete;
  ConsoleUserIdentity& operator=(const ConsoleUserIdentity&) = delete;

 private:
  platform::OperatingSystem& system_;
  platform::UserToken token_ = nullptr;
  bool hasToken_ = false;
  bool isImpersonating_ = false;
};

}  // namespace KT::Utils
