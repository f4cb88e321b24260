// marnockctl's store commands on a database folder of the test's own.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "apps/marnockctl/ExitStatus.h"
#include "tests/client/ClientFixture.h"
#include "tests/support/ConsoleProfile.h"
#include "tests/support/FakeOperatingSystem.h"

namespace support {

inline constexpr const char* kPeerFile = "PeerDeviceInfo1G12NJ9DS39D.db";
inline constexpr const char* kCurrentFile = "CurrentZentapDeviceInfo1G12NJ9DS39D.db";
inline constexpr const char* kTrustedFile = "TrustedZentapDeviceInfo2G12NJ9DS39D.db";

// The bytes of a database that some SQL has made.
std::string DatabaseMadeBy(const std::string& sql);

// A peer database with `count` rows: udId "u1" to sumId "s1" and so on.
std::string PeerDatabase(int count);

// A trusted database whose one row has the key "k\xff" and a device with devType 3 and that name.
std::string TrustedDatabase(const std::string& devName);

// A journal header which says that the database had no pages before.
std::string FreshJournal();

class StoreFixture : public ClientFixture {
 protected:
  StoreFixture() { profile_.MakeDatabaseFolder(); }

  void Put(const std::string& name, const std::string& bytes) const { WriteBytes(profile_.NativeFile(name), bytes); }
  std::string Windows(const std::string& name) const { return profile_.File(name); }

  // Everything in the folder: bytes by name.
  std::map<std::string, std::string> Content() const;

  // Runs marnockctl and fills `out` and `err`.
  KT::ExitStatus Tool(std::vector<std::string> arguments);

  const ConsoleProfile profile_;  // made after `pipes`, which say where the machine is
  FakeOperatingSystem system_{profile_.SamName()};
  std::string out;
  std::string err;
};

}  // namespace support
