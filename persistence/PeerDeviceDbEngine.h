// The peer table: which sumId belongs to a peer device's udId.
#pragma once

#include <string>

#include "persistence/DbEngine.h"

namespace KT {

// Operations as described at DbEngine: true on success, failures are logged. Keys become part of the statement as they
// stand, so that one with a quote in it fails. Nothing is written to the disk until SaveDbIntoDisk.
class PeerDeviceDbEngine final : public DbEngine {
 public:
  // Runs Init. After a failure the object exists, and its other operations fail.
  PeerDeviceDbEngine();

  bool Init();

  // Adds a row; several may have the same key.
  bool AddPeerDevice(const std::string& udId, const std::string& sumId);

  // Deletes the rows of that key; true also when there are none.
  bool DeletePeerDevice(const std::string& udId);

  // Deletes the rows of that key, then adds one. False tells of the adding alone.
  bool UpdatePeerDevice(const std::string& udId, const std::string& sumId);

  // Stores the sumId of the last row of that key; true also when there is none, and `sumId` is then left as it is.
  bool QueryPeerDevice(const std::string& udId, std::string& sumId);

  // For the operations of the base.
  DbContent& Content() { return content_; }

 private:
  void AppendColumnDefs(std::ostream& statement) const override;
  void AppendInsertColumns(std::ostream& statement) const;

  DbContent content_;
};

}  // namespace KT
