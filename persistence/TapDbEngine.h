// What the two tap-device engines have in common: a table of device records, keyed by sumId.
#pragma once

#include <string>
#include <vector>

#include "codec/BluetoothDeviceSummary.h"
#include "codec/CurrZentapDeviceInfo.h"
#include "persistence/DbEngine.h"

namespace KT {

// What one of the engines is called in SQL, on the disk and in the log.
struct TapEngineNames {
  const char* tableName;
  const char* filePrefix;
  // Qualified names of the operations, for their log lines.
  const char* init;
  const char* add;
  const char* remove;
  const char* update;
  const char* updateList;
  const char* getList;
  const char* get;
};

// Operations as described at DbEngine: true on success, failures are logged. Keys become part of the statement as they
// stand, so that one with a quote in it fails. Columns are found by their names, whatever their order in a loaded file.
// Nothing is written to the disk until SaveDbIntoDisk. `Record` is CurrZentapDeviceInfo or BluetoothDeviceSummary.
template <class Record>
class TapDbEngine : public DbEngine {
 public:
  bool Init();

  // Adds a row; several may have the same key.
  bool AddZentapDeviceInfo(const std::string& sumId, const Record& info);

  // Deletes the rows of that key; true also when there are none.
  bool DeleteZentapDeviceInfo(const std::string& sumId);

  // Deletes the rows of that key, then adds one. False tells of the adding alone.
  bool UpdateZentapDeviceInfo(const std::string& sumId, const Record& info);

  // For each record in turn: deletes the rows whose sumId is the record's `summary`, then adds it under the sumId
  // "sumId". The two keys differ on purpose, so that a second call with the same list adds its rows again. Stops at the
  // first that cannot be added; those before it stay.
  bool UpdateZentapDeviceInfoList(const std::vector<Record>& list);

  // Replaces the content of `list` by all rows, in SQLite's order. After a failure it holds the rows read until then.
  bool GetZentapDeviceInfoList(std::vector<Record>& list);

  // Stores the last row of that key; true also when there is none, and `info` is then left as it is. Fields that the
  // table does not hold get their defaults.
  bool GetZentapDeviceInfo(const std::string& sumId, Record& info);

  // For the operations of the base.
  DbContent& Content() { return content_; }

 protected:
  // Runs Init. After a failure the object exists, and its other operations fail. `names` must outlive the engine.
  explicit TapDbEngine(const TapEngineNames& names);

 private:
  void AppendColumnDefs(std::ostream& statement) const final;
  void AppendInsertColumns(std::ostream& statement) const;

  const TapEngineNames& names_;
  std::string insertText_;
  DbContent content_;
};

extern template class TapDbEngine<CurrZentapDeviceInfo>;
extern template class TapDbEngine<BluetoothDeviceSummary>;

}  // namespace KT
