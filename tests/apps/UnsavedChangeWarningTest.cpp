#include "apps/marnock-host/UnsavedChangeWarning.h"

#include <gtest/gtest.h>

#include "tests/support/LogCapture.h"

namespace {

TEST(UnsavedChangeWarning, NamesTheTableAndHowManySavesHaveFailed) {
  support::LogCapture log;
  KT::WarnOfUnsavedChange(KT::StoreTable::Peer, {.saved = 9, .failedSinceLastSaved = 1});
  KT::WarnOfUnsavedChange(KT::StoreTable::Current, {.saved = 9, .failedSinceLastSaved = 20});
  KT::WarnOfUnsavedChange(KT::StoreTable::Trusted, {.saved = 0, .failedSinceLastSaved = 3});
  EXPECT_EQ(log.Take(),
            (std::vector<std::string>{
                "4 A change of the peer table is answered with 0 and is not on the disk; saves failed since "
                "the last good one: 1(KT::WarnOfUnsavedChange)",
                "4 A change of the current table is answered with 0 and is not on the disk; saves failed "
                "since the last good one: 20(KT::WarnOfUnsavedChange)",
                "4 A change of the trusted table is answered with 0 and is not on the disk; saves failed "
                "since the last good one: 3(KT::WarnOfUnsavedChange)"}));
}

}  // namespace
