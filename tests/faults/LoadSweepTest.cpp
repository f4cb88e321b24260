// Engines that come up while anything fails, with a file to load and without one.
#include "tests/faults/EngineSweep.h"

namespace {

using faults::Outcome;
using faults::Round;

template <class Table>
class LoadSweep : public EngineSweep<Table> {
 protected:
  // A file of one row on the disk, and no engine.
  void PrepareFile() {
    this->engine_.reset();
    if (bytes_.empty()) {
      this->engine_.emplace();
      EXPECT_TRUE(Table::Add(*this->engine_, "key", "value") && this->Save());
      this->engine_.reset();
      bytes_ = support::ReadBytes(this->Native(Table::kFile));
    }
    this->log_.Take();
  }

  // Not even a folder.
  void PrepareNothing() {
    this->engine_.reset();
    std::filesystem::remove_all(this->profile_.NativeRoot());
    this->log_.Take();
  }

  void Build() { this->engine_.emplace(); }

  // A load tells of its failure by the log and by operations that fail, and does not touch the file. A file whose
  // attributes cannot be asked for counts as absent.
  Outcome CheckLoad(const Round& round) {
    const bool isLoaded = Value() == "value";
    if (!isLoaded) {
      ExpectFailureLine(round);
    }
    EXPECT_EQ(this->Files(), Lines{Table::kFile});
    EXPECT_EQ(support::ReadBytes(this->Native(Table::kFile)), bytes_);
    EXPECT_TRUE(this->engine_->Init()) << "nothing fails any more";
    EXPECT_EQ(Value(), "value");
    return isLoaded ? Outcome::Survived : Outcome::Failed;
  }

  Outcome CheckFirstStart(const Round& round) {
    const bool isReady = Table::Add(*this->engine_, "key", "value");
    if (!isReady) {
      ExpectFailureLine(round);
      EXPECT_TRUE(this->engine_->Init()) << "nothing fails any more";
      EXPECT_TRUE(Table::Add(*this->engine_, "key", "value"));
    }
    EXPECT_TRUE(this->Save());
    EXPECT_EQ(this->DiskRows(), Lines{"key|value"});
    return isReady ? Outcome::Survived : Outcome::Failed;
  }

 private:
  std::string Value() {
    std::string value;
    return Table::Get(*this->engine_, "key", value) ? value : "(failed)";
  }

  void ExpectFailureLine(const Round& round) {
    const bool countsAsAbsent = std::string(round.kind.name) == "GetFileAttributesW";
    EXPECT_EQ(Value(), countsAsAbsent ? "" : "(failed)");
    const Lines lines = this->log_.Take();
    EXPECT_TRUE(HasLine(lines, Table::kInitFailure) || countsAsAbsent || round.MayLoseLogLines());
  }

  std::string bytes_;
};

TYPED_TEST_SUITE(LoadSweep, EveryTable, TableName);

TYPED_TEST(LoadSweep, IsWholeOrFailsAndLeavesTheFileAlone) {
  Sweep(this->injector_, faults::AllFaultKinds(),
        {.name = std::string("load of ") + TypeParam::kName,
         .prepare = [this] { this->PrepareFile(); },
         .run = [this] { this->Build(); },
         .check = [this](const Round& round) { return this->CheckLoad(round); }});
}

TYPED_TEST(LoadSweep, FirstStartMakesTheTableOrFails) {
  Sweep(this->injector_, faults::AllFaultKinds(),
        {.name = std::string("first start of ") + TypeParam::kName,
         .prepare = [this] { this->PrepareNothing(); },
         .run = [this] { this->Build(); },
         .check = [this](const Round& round) { return this->CheckFirstStart(round); }});
}

}  // namespace
