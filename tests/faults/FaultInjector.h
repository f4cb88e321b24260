// Everything that can be made to fail, one kind at a time.
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "tests/support/AllocationFaults.h"
#include "tests/support/FakeOperatingSystem.h"
#include "tests/support/FaultVfs.h"

namespace faults {

// A kind of call, with the way in which it fails.
struct FileFault {
  support::FileCall call;
  int result;  // an SQLITE_ code
};
struct SystemFault {
  support::SystemCall call;
  bool isThrown;
};
struct FaultKind {
  const char* name;
  std::variant<FileFault, SystemFault, support::Allocator> what;
  std::vector<support::FaultSpan> spans{support::FaultSpan::Once, support::FaultSpan::FromThenOn};
};

// Every kind there is.
const std::vector<FaultKind>& AllFaultKinds();

// Only those of SQLite's file calls.
std::vector<FaultKind> FileFaultKinds();

bool IsMemoryFault(const FaultKind& kind);

// One thread.
class FaultInjector {
 public:
  // `system` must be in place for as long as this lives.
  explicit FaultInjector(support::FakeOperatingSystem& system);

  // The nth call of that kind from now on fails, and with FromThenOn each one after it. A test does nothing of its own
  // between this and Heal.
  void Arm(const FaultKind& kind, int nth, support::FaultSpan span);

  // Nothing fails any more. Returns whether anything did since Arm.
  bool Heal();

 private:
  support::FakeOperatingSystem& system_;
  support::FaultVfs vfs_;
  std::optional<support::AllocationFault> memory_;
};

}  // namespace faults
