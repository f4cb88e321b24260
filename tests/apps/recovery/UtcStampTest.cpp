#include "apps/recovery/UtcStamp.h"

#include <gtest/gtest.h>

using std::chrono::milliseconds;
using std::chrono::system_clock;

TEST(UtcStamp, CountsFromTheEpoch) { EXPECT_EQ(KT::UtcStamp(system_clock::time_point()), "19700101T000000.000Z"); }

TEST(UtcStamp, KeepsItsWidth) {
  EXPECT_EQ(KT::UtcStamp(system_clock::time_point(milliseconds(951'786'062'007LL))), "20000229T010102.007Z");
}

TEST(UtcStamp, DropsWhatIsLessThanAMillisecond) {
  EXPECT_EQ(KT::UtcStamp(system_clock::time_point(
                std::chrono::duration_cast<system_clock::duration>(std::chrono::nanoseconds(999'999)))),
            "19700101T000000.000Z");
}
