#include <sys/prctl.h>
#include <sys/stat.h>

#include <cerrno>
#include <system_error>

#include "platform/program/ProcessHardening.h"

namespace platform {

namespace {

constexpr mode_t kNothingForOthers = 0077;

}  // namespace

void HardenProcess() {
  umask(kNothingForOthers);
  if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) {
    throw std::system_error(errno, std::system_category(), "giving up the right to gain privileges");
  }
}

}  // namespace platform
