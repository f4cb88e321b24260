#include "client/InputChecks.h"

#include <gtest/gtest.h>

namespace {

TEST(KeyCheck, AcceptsWhatTheStoreCanLookUp) {
  EXPECT_FALSE(KT::WhyNotAKey("K", "a").has_value());
  EXPECT_FALSE(KT::WhyNotAKey("K", "h\xC3\xB6 \"; DROP TABLE x; --").has_value());
  EXPECT_FALSE(KT::WhyNotAKey("K", "\xFF\xFE").has_value());
}

TEST(KeyCheck, RefusesAnEmptyKey) {
  EXPECT_EQ(KT::WhyNotAKey("UDID", ""), "UDID is empty: an entry needs a key to be found by");
}

TEST(KeyCheck, RefusesASingleQuoteAndSaysWhere) {
  EXPECT_EQ(KT::WhyNotAKey("UDID", "it's"), "UDID holds a single quote at byte 2: the store cannot look such a key up");
}

TEST(KeyCheck, RefusesANulAndSaysWhere) {
  EXPECT_EQ(KT::WhyNotAKey("UDID", std::string("ab\0c", 4)),
            "UDID holds a NUL at byte 2: the store would cut the key there");
}

TEST(KeyCheck, AcceptsTheLongestStringAndRefusesOneByteMore) {
  EXPECT_FALSE(KT::WhyNotAKey("K", std::string(32'767, 'k')).has_value());
  EXPECT_EQ(KT::WhyNotAKey("K", std::string(32'768, 'k')),
            "K has 32768 bytes; the longest string that can be sent has 32767");
}

TEST(StringCheck, KnowsNoLimitButTheLength) {
  EXPECT_FALSE(KT::WhyNotAString("S", "").has_value());
  EXPECT_FALSE(KT::WhyNotAString("S", std::string("it's\0", 5)).has_value());
  EXPECT_FALSE(KT::WhyNotAString("S", std::string(32'767, 's')).has_value());
  EXPECT_TRUE(KT::WhyNotAString("S", std::string(32'768, 's')).has_value());
}

}  // namespace
