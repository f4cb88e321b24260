// One of the three engines with its files, under faults.
#pragma once

#include <algorithm>
#include <optional>
#include <string>

#include "tests/faults/RestartedHost.h"
#include "tests/faults/Sweep.h"
#include "tests/faults/Tables.h"
#include "tests/persistence/EngineTest.h"

inline bool HasLine(const Lines& lines, const std::string& start) {
  return std::any_of(lines.begin(), lines.end(), [&](const std::string& line) { return line.starts_with(start); });
}

template <class Table>
class EngineSweep : public EngineTest {
 protected:
  bool Save() { return Table::Save(*engine_); }
  Lines MemoryRows() { return Rows(*engine_->Content().dbContentPtr, Table::kRows); }
  Lines DiskRows() { return restarted_.Rows(profile_, Table::kFile, Table::kRows); }

  faults::FaultInjector injector_{system_};
  faults::RestartedHost restarted_;
  std::optional<typename Table::Engine> engine_;
};

struct TableName {
  template <class Table>
  static std::string GetName(int) {
    std::string name = Table::kName;
    std::replace(name.begin(), name.end(), ' ', '_');
    return name;
  }
};

using EveryTable = testing::Types<faults::PeerTable, faults::CurrentTable, faults::TrustedTable>;
