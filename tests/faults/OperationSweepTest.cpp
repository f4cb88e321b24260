// The engines' operations while anything fails.
#include <functional>
#include <vector>

#include "tests/faults/EngineSweep.h"

namespace {

using faults::Outcome;
using faults::Round;
using faults::Sweep;

// Every operation starts from these rows, in memory and on the disk.
const Lines kRows{"other|kept", "key|old"};

template <class Engine>
struct Operation {
  const char* name;
  std::function<bool(Engine&)> run;
  const char* failure;              // how the log line of its failure begins
  std::vector<Lines> afterSuccess;  // the rows that it may lead to
  std::vector<Lines> afterFailure;  // likewise
};

// A delete whose result an update ignores may have failed, and the old row stays beside the new one.
template <class Table>
std::vector<Operation<typename Table::Engine>> CommonOperations() {
  using Engine = typename Table::Engine;
  return {
      {"add",
       [](Engine& engine) { return Table::Add(engine, "new", "value"); },
       Table::kAddFailure,
       {{"other|kept", "key|old", "new|value"}},
       {kRows}},
      {"delete",
       [](Engine& engine) { return Table::Delete(engine, "key"); },
       "4 [KTData] Delete database item filed:",
       {{"other|kept"}},
       {kRows}},
      {"update",
       [](Engine& engine) { return Table::Update(engine, "key", "new"); },
       Table::kAddFailure,
       {{"other|kept", "key|new"}, {"other|kept", "key|old", "key|new"}},
       {kRows, {"other|kept"}}},
      {"get",
       [](Engine& engine) {
         std::string value;
         return Table::Get(engine, "key", value) && value == "old";
       },
       Table::kGetFailure,
       {kRows},
       {kRows}},
      {"CreateTable",
       [](Engine& engine) { return engine.CreateTable(engine.Content()); },
       "4 [KTData] Create device database fail:",
       {kRows},
       {kRows}},
      {"LoadDbFromDisk",
       [](Engine& engine) { return engine.LoadDbFromDisk(engine.Content()); },
       "4 [KTData] Load local database failed:",
       {kRows},
       {kRows}},
  };
}

// Two devices, of which the first replaces the row of "key".
template <class Table>
const std::vector<typename Table::Record> kBatch = [] {
  std::vector<typename Table::Record> list{Table::Named("one"), Table::Named("two")};
  list[0].summary = "key";
  return list;
}();

template <class Table>
std::vector<Operation<typename Table::Engine>> ListOperations() {
  using Engine = typename Table::Engine;
  return {
      {"get list",
       [](Engine& engine) {
         std::vector<typename Table::Record> list;
         return engine.GetZentapDeviceInfoList(list) && list.size() == 2 && list[1].devName == "old";
       },
       "4 [KTData] Get zentap device list failed:",
       {kRows},
       {kRows}},
      {"update list",
       [](Engine& engine) { return engine.UpdateZentapDeviceInfoList(kBatch<Table>); },
       "4 [KTData] ",
       {{"other|kept", "sumId|one", "sumId|two"}, {"other|kept", "key|old", "sumId|one", "sumId|two"}},
       {kRows, {"other|kept"}, {"other|kept", "sumId|one"}, {"other|kept", "key|old", "sumId|one"}}},
  };
}

template <class Table>
class OperationSweep : public EngineSweep<Table> {
 protected:
  using Engine = typename Table::Engine;

  OperationSweep() { this->engine_.emplace(); }

  void SweepThrough(const Operation<Engine>& operation) {
    Sweep(this->injector_, faults::AllFaultKinds(),
          {.name = std::string(operation.name) + " on " + Table::kName,
           .prepare = [this] { Prepare(); },
           .run = [&] { result_ = operation.run(*this->engine_); },
           .check = [&](const Round& round) { return Check(operation, round); }});
  }

 private:
  void Prepare() {
    Engine& engine = *this->engine_;
    engine.Content().dbContentPtr->exec(std::string("DELETE FROM ") + engine.Content().tableName);
    EXPECT_TRUE(Table::Add(engine, "other", "kept") && Table::Add(engine, "key", "old") && this->Save());
    this->log_.Take();
  }

  Outcome Check(const Operation<Engine>& operation, const Round& round) {
    const bool hasSucceeded = result_;
    const Lines lines = this->log_.Take();
    const Lines rows = this->MemoryRows();
    const auto& allowed = hasSucceeded ? operation.afterSuccess : operation.afterFailure;
    EXPECT_NE(std::find(allowed.begin(), allowed.end(), rows), allowed.end()) << testing::PrintToString(rows);
    EXPECT_EQ(this->DiskRows(), kRows) << "only a save writes";
    if (!hasSucceeded) {
      EXPECT_TRUE(HasLine(lines, operation.failure) || round.MayLoseLogLines()) << testing::PrintToString(lines);
    }
    Prepare();
    EXPECT_TRUE(operation.run(*this->engine_)) << "nothing fails any more";
    EXPECT_EQ(this->MemoryRows(), operation.afterSuccess.front());
    EXPECT_TRUE(this->Save());
    EXPECT_EQ(this->DiskRows(), operation.afterSuccess.front());
    return hasSucceeded ? Outcome::Survived : Outcome::Failed;
  }

  bool result_ = false;
};

TYPED_TEST_SUITE(OperationSweep, EveryTable, TableName);

TYPED_TEST(OperationSweep, DoesItsWorkOrFailsAndLeavesTheRowsThatItDidNotReach) {
  for (const auto& operation : CommonOperations<TypeParam>()) {
    this->SweepThrough(operation);
  }
}

template <class Table>
using ListSweep = OperationSweep<Table>;
using TapTables = testing::Types<faults::CurrentTable, faults::TrustedTable>;
TYPED_TEST_SUITE(ListSweep, TapTables, TableName);

TYPED_TEST(ListSweep, ReadsOrReplacesABatchOrFails) {
  for (const auto& operation : ListOperations<TypeParam>()) {
    this->SweepThrough(operation);
  }
}

}  // namespace
