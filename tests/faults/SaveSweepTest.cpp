// Saves in which anything fails, of each of the three tables.
#include "tests/faults/RestartedHost.h"
#include "tests/faults/Sweep.h"
#include "tests/faults/Tables.h"
#include "tests/persistence/EngineTest.h"

namespace {

using faults::Outcome;
using faults::Round;

constexpr const char* kSaved = "3 [KTData] Save database success.(KT::DbEngine::SaveDbIntoDisk)";
constexpr const char* kSaveFailed = "4 [KTData] Save database filed:";

// Some pages of the database: a save is more than one write.
const std::string kBulk(9'000, 'b');

bool Contains(const Lines& lines, const std::string& start) {
  return std::any_of(lines.begin(), lines.end(), [&](const std::string& line) { return line.starts_with(start); });
}

template <class Table>
class SaveSweep : public EngineTest {
 protected:
  SaveSweep() { EXPECT_TRUE(Table::Add(engine_, "bulk", kBulk) && Table::Add(engine_, "key", "0") && Save()); }

  bool Save() { return Table::Save(engine_); }
  Lines MemoryRows() { return Rows(*engine_.Content().dbContentPtr, Table::kRows); }
  Lines DiskRows() { return restarted_.Rows(profile_, Table::kFile, Table::kRows); }

  // A change that is not yet saved.
  void Change() {
    before_ = MemoryRows();
    EXPECT_TRUE(Table::Update(engine_, "key", std::to_string(++changes_)));
    log_.Take();
  }

  Outcome Check(const Round& round) {
    const Lines lines = log_.Take();
    EXPECT_EQ(MemoryRows().back(), "key|" + std::to_string(changes_));
    const Lines disk = DiskRows();
    if (isSaved_) {
      EXPECT_EQ(disk, MemoryRows());
      EXPECT_TRUE(Contains(lines, kSaved) || IsMemoryFault(round.kind));
    } else {
      EXPECT_TRUE(disk == before_ || disk == MemoryRows()) << testing::PrintToString(disk);
      EXPECT_TRUE(Contains(lines, kSaveFailed) || round.MayLoseLogLines()) << testing::PrintToString(lines);
      EXPECT_TRUE(Save()) << "nothing fails any more";
      EXPECT_EQ(DiskRows(), MemoryRows());
    }
    EXPECT_EQ(engine_.Saves().failedSinceLastSaved, 0U);
    return isSaved_ ? Outcome::Survived : Outcome::Failed;
  }

  faults::FaultInjector injector_{system_};
  faults::RestartedHost restarted_;
  typename Table::Engine engine_;
  Lines before_;
  int changes_ = 0;
  bool isSaved_ = false;
};

struct TableName {
  template <class Table>
  static std::string GetName(int) {
    std::string name = Table::kName;
    std::replace(name.begin(), name.end(), ' ', '_');
    return name;
  }
};
using Tables = testing::Types<faults::PeerTable, faults::CurrentTable, faults::TrustedTable>;
TYPED_TEST_SUITE(SaveSweep, Tables, TableName);

TYPED_TEST(SaveSweep, PutsEverythingOnTheDiskOrFailsAndLosesNothing) {
  Sweep(this->injector_, faults::AllFaultKinds(),
        {.name = std::string("save of ") + TypeParam::kName,
         .prepare = [this] { this->Change(); },
         .run = [this] { this->isSaved_ = this->Save(); },
         .check = [this](const Round& round) { return this->Check(round); }});
}

}  // namespace
