#include "bench/store/StoreComparison.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <type_traits>

#include "bench/store/PlainRows.h"
#include "bench/store/PlainStore.h"
#include "bench/support/SampleDevices.h"
#include "bench/support/Samples.h"
#include "persistence/DevicePersistence.h"

namespace bench {

namespace {

namespace fs = std::filesystem;

constexpr double kSetAim = 1.10;
constexpr double kGetAim = 1.3;
constexpr int kGetsPerRound = 10;

// So that a table takes seconds, not minutes: one round copies it six times.
int Rounds(int rows) { return std::clamp(60'000 / rows, 30, 150); }

template <class Value>
Value SampleValue(int number) {
  return SampleDevice(number);
}
template <>
BluetoothDeviceSummary SampleValue<BluetoothDeviceSummary>(int number) {
  return SampleTrustedDevice(number);
}
template <>
std::string SampleValue<std::string>(int number) {
  return SampleKey(-number - 1);
}

void Require(bool condition, const char* what) {
  if (condition) return;
  std::fprintf(stderr, "store_bench: %s\n", what);
  std::exit(EXIT_FAILURE);
}

// The service's store, one table of it.
template <class Value>
class Measured {
 public:
  void Set(const std::string& key, const Value& value) {
    if constexpr (std::is_same_v<Value, CurrZentapDeviceInfo>) Check(store_.SetCurrZentapDeviceInfo(key, value));
    if constexpr (std::is_same_v<Value, BluetoothDeviceSummary>) Check(store_.SetTrustedZentapDeviceInfo(key, value));
    if constexpr (std::is_same_v<Value, std::string>) Check(store_.SetPeerDevice(key, value));
  }

  void Get(const std::string& key, Value& value) {
    if constexpr (std::is_same_v<Value, CurrZentapDeviceInfo>) Check(store_.GetCurrZentapDeviceInfo(key, value));
    if constexpr (std::is_same_v<Value, BluetoothDeviceSummary>) Check(store_.GetTrustedZentapDeviceInfo(key, value));
    if constexpr (std::is_same_v<Value, std::string>) Check(store_.GetPeerDevice(key, value));
  }

  void Delete(const std::string& key) {
    if constexpr (std::is_same_v<Value, CurrZentapDeviceInfo>) Check(store_.DeleteCurrZentapDeviceInfo(key));
    if constexpr (std::is_same_v<Value, BluetoothDeviceSummary>) Check(store_.DeleteTrustedZentapDeviceInfo(key));
    if constexpr (std::is_same_v<Value, std::string>) Check(store_.DeletePeerDevice(key));
  }

 private:
  static void Check(int result) { Require(result == 0, "an operation of the store failed"); }

  KT::DevicePersistence store_;
};

// The plain program's, with the same statements.
template <class Value>
class Baseline {
 public:
  explicit Baseline(const std::string& file) : store_(file, Table().createText) {}

  void Fill(int rows) {
    store_.Run("BEGIN");
    for (int i = 0; i < rows; ++i) Add(SampleKey(i), SampleValue<Value>(i));
    store_.Run("COMMIT");
    store_.Save();
  }

  void Set(const std::string& key, const Value& value) {
    Remove(key);
    Add(key, value);
    store_.Save();
  }

  void Get(const std::string& key, Value& value) {
    store_.Run("SELECT * FROM " + std::string(Table().name) + Where(key), {},
               [&](sqlite3_stmt* row) { ReadRow(row, value); });
  }

  void Delete(const std::string& key) {
    Remove(key);
    store_.Save();
  }

 private:
  static const PlainTable& Table() { return PlainTableOf<Value>(); }
  static std::string Where(const std::string& key) {
    return " WHERE " + std::string(Table().keyColumn) + " = '" + key + "';";
  }
  void Remove(const std::string& key) { store_.Run("DELETE FROM " + std::string(Table().name) + Where(key)); }
  void Add(const std::string& key, const Value& value) {
    store_.Run(Table().insertText, [&](sqlite3_stmt* insert) { BindRow(insert, key, value); });
  }

  PlainStore store_;
};

struct Times {
  Samples set;
  Samples get;
  Samples remove;
};

// One round with one key; afterwards the table is as it was.
template <class Subject, class Value>
void Measure(Subject& subject, const std::string& key, const Value& value, Times& times) {
  times.set.Add(TimeOf([&] { subject.Set(key, value); }));
  Value read{};
  for (int i = 0; i < kGetsPerRound; ++i) times.get.Add(TimeOf([&] { subject.Get(key, read); }));
  times.remove.Add(TimeOf([&] { subject.Delete(key); }));
  subject.Set(key, value);
}

RatioRow Row(const std::string& what, const Samples& measured, const Samples& baseline, double aim) {
  return {what, "store", "plain", measured.Median(), baseline.Median(), aim};
}

}  // namespace

template <class Value>
std::vector<RatioRow> CompareTable(const StoreFolders& folders, int rows) {
  const PlainTable& table = PlainTableOf<Value>();
  for (const std::string& folder : {folders.storeFolder, folders.plainFolder}) {
    fs::remove_all(folder);
    fs::create_directories(folder);
  }
  Baseline<Value> plain(folders.plainFolder + "/" + table.fileName);
  plain.Fill(rows);
  fs::copy(folders.plainFolder + "/" + table.fileName, folders.storeFolder + "/" + table.fileName);
  Measured<Value> store;  // loads the file that the plain program wrote
  Value read{};
  store.Get(SampleKey(rows - 1), read);
  Require(!(read == Value{}), "the store does not find the rows of the plain program");

  Times measured;
  Times baseline;
  for (int round = 0; round < Rounds(rows); ++round) {
    const int number = round * 7 % rows;
    const std::string key = SampleKey(number);
    const auto value = SampleValue<Value>(number);
    if (round % 2 == 0) Measure(store, key, value, measured);
    Measure(plain, key, value, baseline);
    if (round % 2 != 0) Measure(store, key, value, measured);
  }
  const std::string where = " of " + std::string(table.name) + ", " + std::to_string(rows) + " rows";
  return {Row("set" + where, measured.set, baseline.set, kSetAim),
          Row("get" + where, measured.get, baseline.get, kGetAim),
          Row("delete" + where, measured.remove, baseline.remove, kSetAim)};
}

template std::vector<RatioRow> CompareTable<CurrZentapDeviceInfo>(const StoreFolders& folders, int rows);
template std::vector<RatioRow> CompareTable<BluetoothDeviceSummary>(const StoreFolders& folders, int rows);
template std::vector<RatioRow> CompareTable<std::string>(const StoreFolders& folders, int rows);

}  // namespace bench
