// Saves in which anything fails, of each of the three tables.
#include "tests/faults/EngineSweep.h"

namespace {

using faults::Outcome;
using faults::Round;

// Some pages of the database: a save is more than one write.
const std::string kBulk(9'000, 'b');

template <class Table>
class SaveSweep : public EngineSweep<Table> {
 protected:
  SaveSweep() {
    auto& engine = this->engine_.emplace();
    EXPECT_TRUE(Table::Add(engine, "bulk", kBulk) && Table::Add(engine, "key", "0") && this->Save());
  }

  // A change that is not yet saved. Nothing lies beside the file.
  void Change() {
    std::filesystem::remove(Temporary());
    before_ = this->MemoryRows();
    EXPECT_TRUE(Table::Update(*this->engine_, "key", std::to_string(++changes_)));
    this->log_.Take();
  }

  // The same beside what an earlier save left, so that the file cannot be renamed.
  void ChangeBesideATemporaryFile() {
    Change();
    support::WriteBytes(Temporary(), "stale");
  }

  Outcome Check(const Round& round) {
    const Lines lines = this->log_.Take();
    EXPECT_EQ(this->MemoryRows().back(), "key|" + std::to_string(changes_));
    isSaved_ ? CheckSaved(round, lines) : CheckFailed(round, lines);
    EXPECT_EQ(this->engine_->Saves().failedSinceLastSaved, 0U);
    return isSaved_ ? Outcome::Survived : Outcome::Failed;
  }

  bool isSaved_ = false;

 private:
  std::filesystem::path Temporary() const { return this->Native(std::string(Table::kFile) + ".tmp"); }

  void CheckSaved(const Round& round, const Lines& lines) {
    EXPECT_EQ(this->DiskRows(), this->MemoryRows());
    if (!IsMemoryFault(round.kind)) {
      EXPECT_TRUE(HasLine(lines, "3 [KTData] Save database success.(KT::DbEngine::SaveDbIntoDisk)"));
    }
  }

  void CheckFailed(const Round& round, const Lines& lines) {
    const Lines disk = this->DiskRows();
    EXPECT_TRUE(disk == before_ || disk == this->MemoryRows()) << testing::PrintToString(disk);
    EXPECT_TRUE(HasLine(lines, "4 [KTData] Save database filed:") || round.MayLoseLogLines());
    EXPECT_EQ(this->engine_->Saves().failedSinceLastSaved, 1U);
    EXPECT_TRUE(this->Save()) << "nothing fails any more";
    EXPECT_EQ(this->DiskRows(), this->MemoryRows());
  }

  Lines before_;
  int changes_ = 0;
};

TYPED_TEST_SUITE(SaveSweep, EveryTable, TableName);

TYPED_TEST(SaveSweep, PutsEverythingOnTheDiskOrFailsAndLosesNothing) {
  Sweep(this->injector_, faults::AllFaultKinds(),
        {.name = std::string("save of ") + TypeParam::kName,
         .prepare = [this] { this->Change(); },
         .run = [this] { this->isSaved_ = this->Save(); },
         .check = [this](const Round& round) { return this->Check(round); }});
}

TYPED_TEST(SaveSweep, OverAFileThatCannotBeRenamedLosesNothingEither) {
  Sweep(this->injector_, faults::AllFaultKinds(),
        {.name = std::string("save of ") + TypeParam::kName + " beside a stale .tmp",
         .prepare = [this] { this->ChangeBesideATemporaryFile(); },
         .run = [this] { this->isSaved_ = this->Save(); },
         .check = [this](const Round& round) { return this->Check(round); }});
}

}  // namespace
