#include <gtest/gtest.h>

#include <string>

#include "tests/platform/program/ChildProgram.h"

namespace platform {
namespace {

using testing_support::ChildOutcome;
using testing_support::RunChild;

TEST(ProgramArguments, AreUtf8AndOtherwiseUnchanged) {
  const ChildOutcome child = RunChild({"arguments", "plain", "", "two words", "\"quoted\\", "\xC3\xA9\xE4\xB8\xAD",
                                       "\xF0\x9F\x98\x80", "C:\\a b\\", "*"});
  EXPECT_EQ(child.output, "plain\n\ntwo words\n\"quoted\\\n\xC3\xA9\xE4\xB8\xAD\n\xF0\x9F\x98\x80\nC:\\a b\\\n*\n");
  EXPECT_EQ(child.status, 0);
}

TEST(StandardStreams, CarryEveryByteAsItIs) {
  std::string bytes = "a\r\nb\n\r\x1A\x04";
  for (int i = 0; i < 256; ++i) {
    bytes += static_cast<char>(i);
  }
  const ChildOutcome child = RunChild({"copy", std::to_string(bytes.size())}, bytes);
  EXPECT_EQ(child.output, bytes);
  EXPECT_EQ(child.status, 0);
}

TEST(StandardInput, MayBeEmpty) { EXPECT_EQ(RunChild({"copy", "0"}).status, 0); }

TEST(StandardInput, IsRefusedFromOneByteOverTheLimit) {
  EXPECT_EQ(RunChild({"copy", "40000"}, std::string(40000, 'x')).output, std::string(40000, 'x'));
  const ChildOutcome child = RunChild({"copy", "40000"}, std::string(40001, 'x'));
  EXPECT_EQ(child.errors, "cannot read standard input: it holds more than 40000 bytes");
  EXPECT_EQ(child.status, 1);
}

TEST(StandardError, IsWhereLogLinesGoByDefault) {
  const ChildOutcome child = RunChild({"log"});
  ASSERT_EQ(child.errors.size(), 27U + 13 + 27 + 10) << child.errors;
  EXPECT_EQ(child.errors.substr(24, 16), " 3 first\\n\xC3\xA9(f)\n") << child.errors;
  EXPECT_EQ(child.errors.substr(40 + 24), " 4 second(f)\n") << child.errors;
  EXPECT_EQ(child.output, "");
}

// What a program prints that ends in order, destructors of static objects included.
constexpr const char* kInOrder = "stopped\nsaved\n";

TEST(RunProgram, EndsInOrderOnInterrupt) {
  const ChildOutcome child = RunChild({"interrupt"});
  EXPECT_EQ(child.output, kInOrder);
  EXPECT_EQ(child.status, 0);
}

TEST(RunProgram, EndsInOrderOnTerminate) {
  const ChildOutcome child = RunChild({"terminate"});
  EXPECT_EQ(child.output, kInOrder);
  EXPECT_EQ(child.status, 0);
}

TEST(RunProgram, EndsInOrderOnHangUp) {
  const ChildOutcome child = RunChild({"hang-up"});
  EXPECT_EQ(child.output, kInOrder);
  EXPECT_EQ(child.status, 0);
}

TEST(RunProgram, EndsInOrderOnRequestWithTheBodysStatus) {
  const ChildOutcome child = RunChild({"request"});
  EXPECT_EQ(child.output, kInOrder);
  EXPECT_EQ(child.status, 3);
}

TEST(RunProgram, EndsWithTheBodysStatusWithoutAWait) { EXPECT_EQ(RunChild({"fail"}).status, 3); }

TEST(RunProgram, RemembersAStopThatCameBeforeTheWait) {
  const ChildOutcome child = RunChild({"stop-before-wait"});
  EXPECT_EQ(child.output, "ready\n");
  EXPECT_EQ(child.status, 0);
}

}  // namespace
}  // namespace platform
