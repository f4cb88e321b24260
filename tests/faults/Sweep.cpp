#include "tests/faults/Sweep.h"

#include <iostream>

#include "tests/faults/Stride.h"

namespace faults {

namespace {

using support::FaultSpan;

// Far more calls than any operation makes: one that never ends is a failure, not a hang.
constexpr int kMostCalls = 20'000;

struct Figures {
  int injected = 0;
  int failed = 0;

  void Print(const std::string& operation) const {
    std::cout << "faults: " << operation << ": " << injected << " injected, " << failed << " failed, "
              << injected - failed << " survived" << std::endl;
    testing::Test::RecordProperty("injected", injected);
    testing::Test::RecordProperty("failed", failed);
  }
};

// Whether the fault was reached.
bool RunRound(FaultInjector& injector, const SweptOperation& operation, const Round& round, Figures& figures) {
  operation.prepare();
  injector.Arm(round.kind, round.nth, round.span);
  operation.run();
  const bool isReached = injector.Heal();
  const Outcome outcome = operation.check(round);
  if (isReached) {
    ++figures.injected;
    figures.failed += outcome == Outcome::Failed ? 1 : 0;
  } else {
    EXPECT_EQ(outcome, Outcome::Survived) << "failed without a fault";
  }
  return isReached;
}

}  // namespace

void Sweep(FaultInjector& injector, const std::vector<FaultKind>& kinds, const SweptOperation& operation) {
  Figures figures;
  const int stride = Stride();
  for (const FaultKind& kind : kinds) {
    for (const FaultSpan span : kind.spans) {
      bool isReached = true;
      for (int nth = 1; isReached; nth += stride) {
        SCOPED_TRACE(operation.name + ": " + kind.name + " " + std::to_string(nth) +
                     (span == FaultSpan::Once ? "" : " and from then on"));
        isReached = RunRound(injector, operation, {kind, span, nth}, figures);
        ASSERT_LT(nth, kMostCalls);
        ASSERT_FALSE(testing::Test::HasFailure());
      }
    }
  }
  figures.Print(operation.name);
}

}  // namespace faults
