#include "host/ConsoleUserIdentity.h"

namespace KT::Utils {

ConsoleUserIdentity::ConsoleUserIdentity(platform::OperatingSystem& system) : system_(system) {
  const platform::Dword session = system_.WTSGetActiveConsoleSessionId();
  hasToken_ = system_.WTSQueryUserToken(session, &token_);
  if (hasToken_) {
    isImpersonating_ = system_.ImpersonateLoggedOnUser(token_) == 1;
  }
}

ConsoleUserIdentity::~ConsoleUserIdentity() {
  if (isImpersonating_) {
    system_.RevertToSelf();
  }
  if (hasToken_) {
    system_.CloseHandle(token_);
  }
}

}  // namespace KT::Utils
