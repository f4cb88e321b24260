#include "apps/recovery/JournalHeader.h"

#include <gtest/gtest.h>

#include "tests/apps/recovery/RecoveryTest.h"

using KT::JournalKind;
using KT::KindOfJournal;

TEST(JournalHeader, IsFreshWhenTheDatabaseHadNoPages) {
  EXPECT_EQ(KindOfJournal(JournalHeader(0)), JournalKind::Fresh);
}

TEST(JournalHeader, IsNotFreshWhenTheDatabaseHadAPage) {
  EXPECT_EQ(KindOfJournal(JournalHeader(1)), JournalKind::Other);
}

TEST(JournalHeader, CountsEveryByteOfTheNumberOfPages) {
  for (const std::size_t position : {16U, 17U, 18U, 19U}) {
    std::string journal = JournalHeader(0);
    journal[position] = 1;
    EXPECT_EQ(KindOfJournal(journal), JournalKind::Other) << position;
  }
}

TEST(JournalHeader, NeedsAllOfItsFields) {
  EXPECT_EQ(KindOfJournal(JournalHeader(0).substr(0, 28)), JournalKind::Fresh);
  EXPECT_EQ(KindOfJournal(JournalHeader(0).substr(0, 27)), JournalKind::Other);
  EXPECT_EQ(KindOfJournal(""), JournalKind::Other);
}

TEST(JournalHeader, NeedsEveryByteOfTheMagicNumber) {
  for (std::size_t position = 0; position < 8; ++position) {
    std::string journal = JournalHeader(0);
    journal[position] = 0;
    EXPECT_EQ(KindOfJournal(journal), JournalKind::Other) << position;
  }
}

namespace {

// The header with its big-endian number at `offset` replaced.
JournalKind WithNumber(std::size_t offset, unsigned number) {
  std::string journal = JournalHeader(0);
  for (std::size_t i = 0; i < 4; ++i) {
    journal[offset + i] = static_cast<char>(number >> (8 * (3 - i)) & 0xFF);
  }
  return KindOfJournal(journal);
}

}  // namespace

TEST(JournalHeader, NeedsASectorSizeThatSqliteCouldHaveWritten) {
  EXPECT_EQ(WithNumber(20, 16), JournalKind::Other);
  EXPECT_EQ(WithNumber(20, 32), JournalKind::Fresh);
  EXPECT_EQ(WithNumber(20, 48), JournalKind::Other);
  EXPECT_EQ(WithNumber(20, 65536), JournalKind::Fresh);
  EXPECT_EQ(WithNumber(20, 131072), JournalKind::Other);
}

TEST(JournalHeader, NeedsAPageSizeThatSqliteCouldHaveWritten) {
  EXPECT_EQ(WithNumber(24, 0), JournalKind::Other);
  EXPECT_EQ(WithNumber(24, 256), JournalKind::Other);
  EXPECT_EQ(WithNumber(24, 512), JournalKind::Fresh);
  EXPECT_EQ(WithNumber(24, 1000), JournalKind::Other);
  EXPECT_EQ(WithNumber(24, 65536), JournalKind::Fresh);
  EXPECT_EQ(WithNumber(24, 131072), JournalKind::Other);
}
