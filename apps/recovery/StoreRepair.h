// Carries out what the database files need after a save that was cut short.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "apps/recovery/Patience.h"

namespace KT {

struct RepairHooks {
  Sleep sleep;                                                     // the calling thread, for that long
  std::function<std::chrono::system_clock::time_point()> now;      // for the names of what is set aside
  std::function<void(const std::string& text, bool isLoss)> tell;  // gets each action in words, once it is done
};

// Hooks that sleep, tell the time and log each action as one line: a loss as a failure, all else as progress.
RepairHooks HostHooks();

// Mends the three database files in `folder` (Windows path with a backslash at the end) by the rules of
// docs/durability.md. Only while the single instance is held and before the service is built. Ends with every file
// whole or absent and nothing beside it, but for what was set aside; `anyLoss` then says whether something that was
// saved could not be brought back. Otherwise returns why not, for people: a service that started now could write an
// empty table over the user's file. Every step may be cut short, and calling it again goes on from there.
std::optional<std::string> RepairStore(const std::wstring& folder, const RepairHooks& hooks, bool& anyLoss);

}  // namespace KT
