// A service's table at work on a disk in memory, and what it answered when.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "persistence/TrustedZentapDbEngine.h"
#include "tests/support/MemoryMachine.h"

namespace crash {

using Rows = std::vector<BluetoothDeviceSummary>;

// What the table held once a change had been tried on the disk.
struct Moment {
  std::size_t events = 0;  // of the disk, up to the answer
  bool isSaved = false;
  Rows rows;
};

// Everything that a test of crashes needs to know of one run.
struct Recording {
  support::DiskImage start;
  std::vector<support::DiskEvent> events;
  std::vector<Moment> moments;  // the first: before anything was changed

  // Whether the rows may be found after the disk stopped at that event: those of the last change that was saved
  // before, of one since then, or of the one under way.
  bool IsAcceptable(const Rows& rows, std::size_t events) const;
};

class Recorder {
 public:
  // Begins with a service that loads what is on the disk.
  explicit Recorder(const support::DiskImage& start);

  support::MemoryDisk& Disk() { return machine_->Disk(); }

  // Changes the table and saves it. Returns whether that succeeded.
  bool Change(const std::function<void(KT::TrustedZentapDbEngine&)>& change);

  Recording Take();

 private:
  Moment Now(bool isSaved);

  support::DiskImage start_;
  std::unique_ptr<support::MemoryMachine> machine_;
  std::unique_ptr<KT::TrustedZentapDbEngine> engine_;
  std::vector<Moment> moments_;
};

// All rows of the table.
Rows RowsOf(KT::TrustedZentapDbEngine& engine);

// A device whose texts take up that many bytes.
BluetoothDeviceSummary Device(const std::string& name, std::size_t bytes);

}  // namespace crash
