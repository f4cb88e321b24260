// A disk as a crash left it, and what the next start makes of it.
#pragma once

#include <optional>
#include <string>

#include "tests/crash/Recorder.h"

namespace crash {

struct Survivor {
  std::optional<std::string> refusal;  // why the host would not start
  bool isLossReported = false;
  Rows rows;
  bool isNextSaveRight = false;                    // the next change came on the disk, with nothing beside it
  std::vector<support::DiskEvent> repairEvents{};  // what the repair did to the disk
};

// Starts as the host does, repair first, and makes one change.
Survivor StartOn(const support::DiskImage& image);

}  // namespace crash
