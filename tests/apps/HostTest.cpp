// How the host ends when it cannot start. That it serves is tested with real processes.
#include "apps/marnock-host/Host.h"

#include <gtest/gtest.h>

#include <sstream>

#include "codec/Protocol.h"
#include "platform/ipc/IPCMessageHub.h"
#include "tests/apps/TemporaryFile.h"
#include "tests/platform/ipc/IpcTestSystem.h"
#include "tests/support/LogCapture.h"

namespace {

class NoStop final : public platform::StopSignal {
 public:
  void Wait() override { ADD_FAILURE() << "the host has started"; }
  void Request() override {}
};

struct Ended {
  int status;
  std::string out;
  std::string err;
};

Ended Start(const KT::HostOptions& options) {
  std::ostringstream out;
  std::ostringstream err;
  NoStop stop;
  const int status = KT::RunHost(options, stop, out, err);
  return {status, out.str(), err.str()};
}

TEST(Host, EndsWithStatus2BeforeAnythingElseWhenTheImportFileIsWrong) {
  const PrivatePipes pipes;
  IPCMessageHub running(KT::kPipeName);
  ASSERT_TRUE(running.Claim());
  const support::TemporaryFile json("{}{}");
  KT::HostOptions options;
  options.importFile = json.Path();
  const support::LogCapture log;
  const Ended ended = Start(options);
  EXPECT_EQ(ended.status, 2);
  EXPECT_EQ(ended.out, "");
  EXPECT_EQ(ended.err.find("marnock-host: " + json.Path() + ": not JSON: "), 0U) << ended.err;
  EXPECT_EQ(log.Lines(), std::vector<std::string>{});
}

TEST(Host, EndsWithStatus1WhenAnotherOneRuns) {
  const PrivatePipes pipes;
  IPCMessageHub running(KT::kPipeName);
  ASSERT_TRUE(running.Claim());
  const support::LogCapture log;
  const Ended ended = Start({});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out, "");
  EXPECT_EQ(ended.err, "marnock-host: another host is running on \\\\.\\Pipe\\iLumoraAssistant\n");
  EXPECT_EQ(log.Lines(), std::vector<std::string>{});
}

TEST(Host, EndsWithStatus1WhenTheLogFileCannotBeOpened) {
  const PrivatePipes pipes;
  const support::TemporaryFile file("");
  KT::HostOptions options;
  options.logFile = file.Path() + "/no/folder.log";
  const Ended ended = Start(options);
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out, "");
  EXPECT_EQ(ended.err.find("marnock-host: cannot open the log file " + options.logFile + ": "), 0U) << ended.err;
}

}  // namespace
