// Pages of zeros in a database file.
#include "apps/recovery/UnwrittenPage.h"

#include "tests/apps/recovery/RecoveryTest.h"

namespace {

using KT::FirstUnwrittenPage;
using testing::Test;

constexpr std::size_t kPage = 4096;

// A database with a text that fills pages of its own, and how many pages that makes.
std::string DatabaseWithALongText() { return PeerDatabase(std::string(3 * kPage, 'x')); }

std::string WithoutLastPage(std::string bytes) { return bytes.replace(bytes.size() - kPage, kPage, kPage, '\0'); }

class UnwrittenPages : public RecoveryTest {};

}  // namespace

TEST(UnwrittenPage, IsFoundByItsNumber) {
  std::string bytes = DatabaseWithALongText();
  EXPECT_EQ(FirstUnwrittenPage(bytes), std::nullopt);
  const std::size_t pages = bytes.size() / kPage;
  bytes = WithoutLastPage(bytes);
  EXPECT_EQ(FirstUnwrittenPage(bytes), pages);
  bytes.back() = 1;
  EXPECT_EQ(FirstUnwrittenPage(bytes), std::nullopt);
}

TEST(UnwrittenPage, MayBeTheBeginningOfOne) {
  const std::string bytes = PeerDatabase("a");
  EXPECT_EQ(FirstUnwrittenPage(bytes + std::string(1, '\0')), bytes.size() / kPage + 1);
}

TEST(UnwrittenPage, IsLookedForInPagesOf65536BytesToo) {
  std::string bytes(3 * 65536, 'x');
  bytes[16] = 0;
  bytes[17] = 1;
  bytes.replace(65536, 65536, 65536, '\0');
  EXPECT_EQ(FirstUnwrittenPage(bytes), 2U);
}

TEST(UnwrittenPage, IsNotLookedForWithoutAPageSize) {
  EXPECT_EQ(FirstUnwrittenPage(""), std::nullopt);
  EXPECT_EQ(FirstUnwrittenPage(std::string(17, '\0')), std::nullopt);
  EXPECT_EQ(FirstUnwrittenPage(std::string(18, '\0')), std::nullopt);
}

TEST_F(UnwrittenPages, OfALongTextBesideAFreshJournalBringBackTheOlderCopy) {
  const std::string old = PeerDatabase("old");
  Put(kPeerFile, WithoutLastPage(DatabaseWithALongText()));
  Put(kPeerJournal, JournalHeader(0));
  Put(kPeerTemporary, old);
  EXPECT_EQ(Repair(), std::nullopt);
  EXPECT_EQ(PrintsOf(Content()), PrintsOf({{kPeerFile, old}}));
}

TEST_F(UnwrittenPages, AreTakenForZerosOfATextWithoutAFreshJournal) {
  const std::string file = WithoutLastPage(DatabaseWithALongText());
  Put(kPeerFile, file);
  Put(kPeerTemporary, PeerDatabase("old"));
  EXPECT_EQ(Repair(), std::nullopt);
  EXPECT_EQ(PrintsOf(Content()), PrintsOf({{kPeerFile, file}}));
}
