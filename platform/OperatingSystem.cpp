#include "platform/OperatingSystem.h"

#include <atomic>

namespace platform {

namespace {
// The seam's one place for a stand-in.
std::atomic<OperatingSystem*> g_replacement{nullptr};
}  // namespace

OperatingSystem& OperatingSystem::Get() {
  OperatingSystem* const replacement = g_replacement.load();
  return replacement != nullptr ? *replacement : RealOperatingSystem();
}

OperatingSystem* OperatingSystem::Replace(OperatingSystem* replacement) { return g_replacement.exchange(replacement); }

}  // namespace platform
