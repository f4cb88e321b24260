#include <gtest/gtest.h>

#include <csignal>

#include "tests/platform/program/ChildProgram.h"

namespace platform {
namespace {

using testing_support::RunChild;

// Ignores a signal in this process, and so in the children that it starts, for one test.
class Ignored {
 public:
  explicit Ignored(int signal) : signal_(signal), before_(std::signal(signal, SIG_IGN)) {}
  ~Ignored() { std::signal(signal_, before_); }
  Ignored(const Ignored&) = delete;
  Ignored& operator=(const Ignored&) = delete;

 private:
  int signal_;
  void (*before_)(int);
};

TEST(PosixRunProgram, EndsOnHangUpByDefault) { EXPECT_EQ(RunChild({"hang-up-then-request"}).output, "hung up\n"); }

TEST(PosixRunProgram, SurvivesAHangUpThatWasIgnoredFromTheStart) {
  const Ignored hangUp(SIGHUP);
  EXPECT_EQ(RunChild({"hang-up-then-request"}).output, "requested\n");
}

TEST(PosixRunProgram, EndsOnAnInterruptThatWasIgnoredFromTheStart) {
  const Ignored interrupt(SIGINT);  // as a shell does for what it starts in the background
  EXPECT_EQ(RunChild({"interrupt"}).output, "stopped\nsaved\n");
}

}  // namespace
}  // namespace platform
