// What may be on the disk after the power failed.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "tests/support/MemoryDisk.h"

namespace crash {

// What brings changes of names to the disk for good, besides time.
enum class NameRule {
  WithFolder,  // a sync of the folder, as POSIX promises; unsynced changes of different names come in any order
  WithAnyFile  // the sync of any file, while folders cannot be synced; changes come in their order. So does a file
               // system with one log for all names (NTFS)
};

// The disk after some events, the power failing just then. What was synced is on it. Of everything else any part may
// be: of writes any subset, a write whole or not at all; of changes of names any subset that the rule allows.
class PowerCut {
 public:
  // After the first `count` of the events that followed `start`. `events` must outlive it.
  PowerCut(const support::DiskImage& start, const std::vector<support::DiskEvent>& events, std::size_t count,
           NameRule rule);

  // How many changes may be there or not.
  std::size_t Undecided() const { return undecided_.size(); }

  // One flag for each of them, in the order of the events: whether it is on the disk.
  using Choice = std::vector<bool>;

  bool IsPossible(const Choice& choice) const;
  support::DiskImage Image(const Choice& choice) const;

 private:
  struct Content {
    std::map<std::string, int> names;
    std::map<int, std::string> files;
  };

  void Happen(const support::DiskEvent& event);
  bool NeedsBefore(const support::DiskEvent& later, const support::DiskEvent& earlier) const;

  template <class Condition>
  void Settle(Condition&& condition);

  const NameRule rule_;
  Content settled_;
  std::vector<const support::DiskEvent*> undecided_;
};

}  // namespace crash
