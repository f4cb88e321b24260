#include "fuzz/StoreStates.h"

#include <algorithm>

#include "fuzz/FuzzInput.h"
#include "persistence/PeerDeviceDbEngine.h"
#include "persistence/TrustedZentapDbEngine.h"
#include "tests/crash/PowerCut.h"
#include "tests/support/MemoryMachine.h"

namespace fuzz {

namespace {

using support::DiskImage;

// Everything that was changed up to a moment, synced or not: what a killed program leaves.
std::vector<DiskImage> StatesOf(const support::MemoryDisk& disk) {
  std::vector<DiskImage> states{{}};
  for (std::size_t count = 1; count <= disk.Events().size(); ++count) {
    const crash::PowerCut cut({}, disk.Events(), count, crash::NameRule::WithFolder);
    DiskImage image = cut.Image(crash::PowerCut::Choice(cut.Undecided(), true));
    if (std::find(states.begin(), states.end(), image) == states.end()) states.push_back(std::move(image));
  }
  return states;
}

}  // namespace

std::vector<DiskImage> TrustedStates() {
  support::MemoryMachine machine;
  {
    KT::TrustedZentapDbEngine engine;
    BluetoothDeviceSummary device;
    device.devName = "first";
    Require(engine.AddZentapDeviceInfo("s1", device) && engine.SaveDbIntoDisk(engine.Content()));
    device.devName = "second";
    Require(engine.UpdateZentapDeviceInfo("s2", device) && engine.SaveDbIntoDisk(engine.Content()));
  }
  return StatesOf(machine.Disk());
}

std::vector<DiskImage> PeerStates() {
  support::MemoryMachine machine;
  {
    KT::PeerDeviceDbEngine engine;
    Require(engine.AddPeerDevice("u1", "s1") && engine.SaveDbIntoDisk(engine.Content()));
    Require(engine.UpdatePeerDevice("u2", std::string(5000, 's')) && engine.SaveDbIntoDisk(engine.Content()));
  }
  return StatesOf(machine.Disk());
}

}  // namespace fuzz
