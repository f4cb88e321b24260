#include <iostream>

#include "bench/store/RowMemory.h"
#include "bench/store/StoreComparison.h"
#include "bench/support/Machine.h"
#include "bench/support/TemporaryFolder.h"
#include "codec/BluetoothDeviceSummary.h"
#include "codec/CurrZentapDeviceInfo.h"
#include "platform/logging/QxLogger.h"

// TMPDIR chooses the disk.
int main() {
  const bench::TemporaryFolder folder;
  const bench::StoreFolders folders{bench::UseMachineIn(folder),
                                    folder.Path() + "/plain/C/Users/root/Orvnta/DeviceMgr"};
  QxLogger::GetInstance().OpenFile(folder.Path() + "/log");
  bench::DescribeMachine(std::cout);

  bench::PrintRatios(std::cout, "Memory by row (growth of the heap)", bench::MeasureRowMemory(), bench::FormatBytes);
  for (const int rows : {10, 100, 1'000, 10'000}) {
    const std::string title = "Operations with " + std::to_string(rows) + " rows, files in " + folder.Path() +
                              " (median time from call to return)";
    std::vector<bench::RatioRow> table;
    const auto add = [&](const std::vector<bench::RatioRow>& more) {
      table.insert(table.end(), more.begin(), more.end());
    };
    add(bench::CompareTable<BluetoothDeviceSummary>(folders, rows));
    add(bench::CompareTable<CurrZentapDeviceInfo>(folders, rows));
    add(bench::CompareTable<std::string>(folders, rows));
    bench::PrintRatios(std::cout, title, table);
  }
}
