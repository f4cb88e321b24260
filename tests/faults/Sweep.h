// Runs an operation again and again, and makes one call more succeed each time before one fails.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/faults/FaultInjector.h"

namespace faults {

// What a swept operation came to: it reported a failure, or it did what it should all the same.
enum class Outcome { Failed, Survived };

// What is about to be swept, and the fault of one round.
struct Round {
  const FaultKind& kind;
  support::FaultSpan span;
  int nth;

  // Whether a line of the log may be missing: for want of memory one is dropped.
  bool MayLoseLogLines() const { return IsMemoryFault(kind) && span == support::FaultSpan::FromThenOn; }
};

struct SweptOperation {
  std::string name;

  // Brings about the state that the operation starts from. Nothing fails.
  std::function<void()> prepare;

  // The operation alone. A fault strikes in here or not at all; the test's own memory counts as well.
  std::function<void()> run;

  // Looks at what is left. Nothing fails any more.
  std::function<Outcome(const Round& round)> check;
};

// For every kind, once and from then on: prepares, arms the fault at the first call, runs, heals and checks; then at
// the second call, and so on, until the operation no longer reaches the fault; of many calls only every n-th where the
// environment's MARNOCK_FAULT_STRIDE is n. Stops at the first round whose check fails. Prints how many faults there
// were and what they did, and records it as properties of the test.
void Sweep(FaultInjector& injector, const std::vector<FaultKind>& kinds, const SweptOperation& operation);

}  // namespace faults
