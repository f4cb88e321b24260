#include "tests/crash/Survival.h"

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Statement.h>

#include "apps/recovery/DatabaseImage.h"
#include "apps/recovery/StoreRepair.h"
#include "platform/text/PlenixBase.h"

namespace crash {

namespace {

std::string FileName() {
  return PlenixBase::UnicodeToUTF8(support::MemoryMachine::kFolder) + "TrustedZentapDeviceInfo2G12NJ9DS39D.db";
}

std::optional<std::string> Repair(bool& isLossReported) {
  const KT::RepairHooks hooks{[](std::chrono::milliseconds) {}, [] { return std::chrono::system_clock::time_point(); },
                              [](const std::string&, bool) {}};
  return KT::RepairStore(support::MemoryMachine::kFolder, hooks, isLossReported);
}

bool IsOnTheDiskAlone(const support::DiskImage& image, std::size_t rows) {
  const auto file = image.find(FileName());
  if (file == image.end() || image.contains(FileName() + ".tmp") || image.contains(FileName() + "-journal")) {
    return false;
  }
  KT::DatabaseImage database(file->second);
  SQLite::Statement count(database.Get(), "SELECT count(*) FROM trustedZentapDeviceInfo");
  return count.executeStep() && count.getColumn(0).getInt64() == static_cast<std::int64_t>(rows);
}

}  // namespace

Survivor StartOn(const support::DiskImage& image) {
  support::MemoryMachine machine(image);
  Survivor survivor;
  survivor.refusal = Repair(survivor.isLossReported);
  survivor.repairEvents = machine.Disk().Events();
  KT::TrustedZentapDbEngine engine;
  survivor.rows = RowsOf(engine);
  survivor.isNextSaveRight = engine.AddZentapDeviceInfo("next", Device("next", 10)) && engine.SaveZentapDbIntoDisk() &&
                             IsOnTheDiskAlone(machine.Disk().Image(), survivor.rows.size() + 1);
  return survivor;
}

}  // namespace crash
