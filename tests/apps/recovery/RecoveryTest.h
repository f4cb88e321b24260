// A database folder to be spoiled, and files for it.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "apps/recovery/StoreRepair.h"
#include "tests/support/ConsoleProfile.h"
#include "tests/support/FakeOperatingSystem.h"

using Lines = std::vector<std::string>;

inline constexpr const char* kPeerFile = "PeerDeviceInfo1G12NJ9DS39D.db";
inline constexpr const char* kPeerJournal = "PeerDeviceInfo1G12NJ9DS39D.db-journal";
inline constexpr const char* kPeerTemporary = "PeerDeviceInfo1G12NJ9DS39D.db.tmp";

// The bytes of a peer database whose one row maps "udId" to `sumId`.
std::string PeerDatabase(const std::string& sumId);

// A valid journal header of 512 bytes that says that the database had that many pages.
std::string JournalHeader(unsigned char pagesBefore);

// A peer database whose change was cut short just before it was complete: the bytes of the changed file and of the
// journal that leads back to PeerDatabase("old").
struct HotDatabase {
  std::string file;
  std::string journal;
};
HotDatabase HalfChangedPeerDatabase();

// Files by name, with what tells their contents apart in a failure's message: size and hash, not thousands of bytes.
using Prints = std::map<std::string, std::string>;
Prints PrintsOf(const std::map<std::string, std::string>& bytesByName);

class RecoveryTest : public testing::Test {
 protected:
  RecoveryTest() { profile_.MakeDatabaseFolder(); }

  std::wstring Folder() const { return profile_.Root() + L"\\Orvnta\\DeviceMgr\\"; }
  std::filesystem::path Native(const std::string& name) const { return profile_.NativeFile(name); }
  void Put(const std::string& name, const std::string& bytes) const { support::WriteBytes(Native(name), bytes); }

  // Everything in the folder: bytes by name.
  std::map<std::string, std::string> Content() const;

  // Runs the repair at a fixed time, without sleeping. Fills what it said, how long it slept and whether it lost
  // anything.
  std::optional<std::string> Repair();

  const support::ConsoleProfile profile_;
  support::FakeOperatingSystem system_{profile_.SamName()};
  Lines told_;
  std::vector<long long> sleptMilliseconds_;
  bool anyLoss_ = false;
};

// The time at which Repair runs, as it stands in names.
inline constexpr const char* kBadSuffix = ".bad-20261121T012345.678Z";
