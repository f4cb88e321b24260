// A database file with what may lie beside it, as a kill left it or damaged further, through the repair and into an
// engine. The repair ends with a whole file or none, or refuses with a reason; nothing that was set aside is deleted or
// changed, nothing damaged is lost, and a second repair finds nothing to do. What lies there then, and what lies there
// without any repair, an engine loads or refuses, and works with.
#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "apps/recovery/Finding.h"
#include "apps/recovery/RepairPlan.h"
#include "apps/recovery/Salvage.h"
#include "apps/recovery/StoreError.h"
#include "apps/recovery/StoreRepair.h"
#include "fuzz/FuzzInput.h"
#include "fuzz/PlainSqliteMemory.h"
#include "fuzz/StoreStates.h"
#include "persistence/PeerDeviceDbEngine.h"
#include "persistence/TrustedZentapDbEngine.h"
#include "platform/text/PlenixBase.h"
#include "tests/support/MemoryMachine.h"

namespace {

using fuzz::FuzzInput;
using fuzz::Require;
using support::DiskImage;
using support::MemoryMachine;

constexpr std::size_t kMostChanges = 16;
constexpr std::size_t kRoomBytes = 4 << 20;
constexpr std::chrono::system_clock::time_point kNow{};

std::string Folder() { return PlenixBase::UnicodeToUTF8(MemoryMachine::kFolder); }

struct Store {
  const KT::StoreFile* file;
  std::vector<DiskImage> states;
};

// Peers first.
const std::vector<Store>& Stores() {
  static const std::vector<Store> stores = [] {
    fuzz::UsePlainSqliteMemory();
    return std::vector<Store>{{&KT::StoreFiles().front(), fuzz::PeerStates()},
                              {&KT::StoreFiles()[2], fuzz::TrustedStates()}};
  }();
  return stores;
}

// One change to one of the three files: other bytes, an end, other content, none.
void Change(FuzzInput& input, const std::string& path, DiskImage& image) {
  const auto choice = input.Take<std::uint8_t>();
  const std::string suffixes[] = {"", "-journal", ".tmp"};
  const std::string name = path + suffixes[choice % 3];
  const auto offset = input.Take<std::uint16_t>();
  std::string& bytes = image[name];
  switch (choice / 3 % 8) {
    case 0:
      image.erase(name);
      break;
    case 1:
      bytes.resize(std::min<std::size_t>(bytes.size(), offset));
      break;
    case 2:
      bytes = input.TakeText(offset);
      break;
    case 3:
      bytes = image[path + suffixes[offset % 3]];
      break;
    default: {
      const std::string other = input.TakeText(choice / 24 % 8 + 1);
      if (!bytes.empty()) bytes.replace(offset % bytes.size(), other.size(), other);
    }
  }
}

DiskImage Start(FuzzInput& input, const Store& store) {
  DiskImage image = store.states[input.Take<std::uint8_t>() % store.states.size()];
  const std::string path = Folder() + store.file->fileName;
  for (std::size_t i = 0; i < kMostChanges && !input.Empty(); ++i) Change(input, path, image);
  // What an earlier repair set aside at the same moment.
  image[path + ".bad-19700101T000000.000Z"] = "damaged before";
  return image;
}

struct Repaired {
  std::optional<std::string> refusal;
  bool anyLoss = false;
  std::size_t told = 0;
};

Repaired Repair() {
  Repaired repaired;
  const KT::RepairHooks hooks{[](std::chrono::milliseconds) {}, [] { return kNow; },
                              [&repaired](const std::string& text, bool) {
                                Require(!text.empty());
                                ++repaired.told;
                              }};
  repaired.refusal = KT::RepairStore(MemoryMachine::kFolder, hooks, repaired.anyLoss);
  Require(!repaired.refusal.has_value() || !repaired.refusal->empty());
  return repaired;
}

bool HasSetAside(const DiskImage& image, const std::string& bytes) {
  return std::any_of(image.begin(), image.end(), [&bytes](const auto& entry) {
    return entry.first.find(".bad-") != std::string::npos && entry.second == bytes;
  });
}

bool Plans(const KT::RepairPlan& plan, KT::RepairStep step) {
  return std::find(plan.steps.begin(), plan.steps.end(), step) != plan.steps.end();
}

// Whatever the first plan sets aside is there afterwards, byte for byte where SQLite did not roll it back before.
void CheckKept(const KT::RepairPlan& plan, const std::string& path, const DiskImage& before, const DiskImage& after) {
  for (const auto& [name, bytes] : before) {
    if (name.find(".bad-") != std::string::npos) Require(after.contains(name) && after.at(name) == bytes);
  }
  if (Plans(plan, KT::RepairStep::SetFileAside) && !Plans(plan, KT::RepairStep::RollBack)) {
    Require(HasSetAside(after, before.at(path)));
  }
  if (Plans(plan, KT::RepairStep::SetTemporaryAside)) Require(HasSetAside(after, before.at(path + ".tmp")));
}

// After a repair that did not refuse.
void CheckRepaired(const KT::StoreFile& file, MemoryMachine& machine) {
  const std::string path = Folder() + file.fileName;
  const DiskImage image = machine.Disk().Image();
  Require(!image.contains(path + "-journal") && !image.contains(path + ".tmp"));
  if (image.contains(path)) Require(KT::Judge(file, image.at(path)).IsWhole());
  const Repaired again = Repair();
  Require(!again.refusal.has_value() && !again.anyLoss && again.told == 0);
  Require(machine.Disk().Image() == image);
}

// Loads, and works with what was loaded. Where the file is known to be whole or absent all of it succeeds.
void UsePeers(bool mustSucceed) {
  KT::PeerDeviceDbEngine engine;
  std::string sumId;
  const bool hasSucceeded = engine.QueryPeerDevice("u1", sumId) && engine.UpdatePeerDevice("u1", "s9") &&
                            engine.QueryPeerDevice("u1", sumId) && engine.SaveDbIntoDisk(engine.Content());
  Require(!mustSucceed || (hasSucceeded && sumId == "s9"));
}

void UseTrusted(bool mustSucceed) {
  KT::TrustedZentapDbEngine engine;
  std::vector<BluetoothDeviceSummary> list;
  BluetoothDeviceSummary device;
  const bool hasSucceeded = engine.GetZentapDeviceInfoList(list) && engine.UpdateZentapDeviceInfo("s1", device) &&
                            engine.GetZentapDeviceInfo("s1", device) && engine.SaveDbIntoDisk(engine.Content());
  Require(!mustSucceed || hasSucceeded);
}

void Use(const Store& store, bool mustSucceed) {
  if (store.file == &KT::StoreFiles().front()) {
    UsePeers(mustSucceed);
  } else {
    UseTrusted(mustSucceed);
  }
}

// `isAsKilled`: nothing but a kill happened to the files.
void RepairAndUse(const Store& store, MemoryMachine& machine, bool isAsKilled) {
  const DiskImage before = machine.Disk().Image();
  const std::string path = Folder() + store.file->fileName;
  const KT::RepairPlan plan =
      KT::PlanFor(KT::Inspect(*store.file, MemoryMachine::kFolder, [](std::chrono::milliseconds) {}));
  Require(machine.Disk().Image() == before);  // a look changes nothing
  const Repaired repaired = Repair();
  Require(!isAsKilled || (!repaired.refusal.has_value() && !repaired.anyLoss));
  if (!repaired.refusal.has_value()) {
    CheckKept(plan, path, before, machine.Disk().Image());
    CheckRepaired(*store.file, machine);
  }
  Use(store, isAsKilled);
}

}  // namespace

// Input: which table and whether to repair it, where its saves were cut short, and further changes to the files.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzInput input(data, size);
  const auto choice = input.Take<std::uint8_t>();
  const Store& store = Stores()[choice & 1U];
  const DiskImage start = Start(input, store);
  const bool isAsKilled = size <= 2;
  MemoryMachine machine(start);
  machine.Disk().LimitRoom(kRoomBytes);
  if ((choice & 0x0eU) == 0x0e) {
    Use(store, false);
  } else if ((choice & 0x0eU) == 0x0c) {
    const auto file = start.find(Folder() + store.file->fileName);
    if (file != start.end()) KT::Salvage(*store.file, file->second);
  } else {
    RepairAndUse(store, machine, isAsKilled);
  }
  return 0;
}
