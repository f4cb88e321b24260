// A repair that is itself cut short at any step, and then run again.
#include "tests/apps/recovery/RecoveryTest.h"

namespace {

using support::SystemCall;
using Files = std::map<std::string, std::string>;

class RepairCuts : public RecoveryTest {
 protected:
  void Fill(const Files& files) {
    for (const auto& entry : std::filesystem::directory_iterator(Native(""))) {
      std::filesystem::remove(entry.path());
    }
    for (const auto& [name, bytes] : files) {
      Put(name, bytes);
    }
  }

  Files EndOf(const Files& start) {
    Fill(start);
    EXPECT_EQ(Repair(), std::nullopt);
    return Content();
  }
};

}  // namespace

TEST_F(RepairCuts, LeadToTheSameEnd) {
  const std::string old = PeerDatabase("old");
  const std::string fresh = JournalHeader(0);
  const HotDatabase hot = HalfChangedPeerDatabase();
  const std::vector<Files> starts{
      {{kPeerFile, PeerDatabase("new")}, {kPeerJournal, fresh}, {kPeerTemporary, old}},
      {{kPeerFile, ""}, {kPeerJournal, fresh}, {kPeerTemporary, old}},
      {{kPeerFile, "damaged"}, {kPeerJournal, "junk"}, {kPeerTemporary, old}},
      {{kPeerFile, hot.file}, {kPeerJournal, hot.journal}, {kPeerTemporary, old}},
      {{kPeerFile, "damaged"}, {kPeerJournal, fresh}, {kPeerTemporary, "damaged too"}},
      {{kPeerJournal, fresh}, {kPeerTemporary, old}},
      {{kPeerJournal, fresh}, {kPeerTemporary, "damaged"}},
  };
  int cuts = 0;
  for (const Files& start : starts) {
    const Files end = EndOf(start);
    for (const SystemCall call : {SystemCall::DeleteFileW, SystemCall::MoveFileW, SystemCall::SyncDirectory}) {
      for (int nth = 1; nth <= 4; ++nth) {
        Fill(start);
        support::FakeOperatingSystem cutting(profile_.SamName());
        for (int attempt = 0; attempt < 10; ++attempt) {
          cutting.Fail(call, nth + attempt);
        }
        cuts += Repair().has_value() ? 1 : 0;
        const support::FakeOperatingSystem whole(profile_.SamName());
        EXPECT_EQ(Repair(), std::nullopt);
        EXPECT_EQ(PrintsOf(Content()), PrintsOf(end));
      }
    }
  }
  EXPECT_GE(cuts, 25);
}
