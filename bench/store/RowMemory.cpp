#include "bench/store/RowMemory.h"

#include <malloc.h>

#include <string>

#include "bench/store/PlainRows.h"
#include "bench/support/SampleDevices.h"
#include "persistence/CurrZentapDbEngine.h"
#include "persistence/PeerDeviceDbEngine.h"
#include "persistence/TrustedZentapDbEngine.h"

namespace bench {

namespace {

constexpr double kAim = 2.0;

// Bytes that the program holds, in the heap proper and in blocks of their own.
double HeapInUse() {
  const struct mallinfo2 info = mallinfo2();
  return static_cast<double>(info.uordblks + info.hblkhd);
}

// `add(i)` inserts row i and returns the bytes of its values.
template <class Add>
RatioRow Measure(const std::string& table, int rows, Add add) {
  const double before = HeapInUse();
  double valueBytes = 0;
  for (int i = 0; i < rows; ++i) valueBytes += static_cast<double>(add(i));
  const double heap = HeapInUse() - before;
  return {table + ", " + std::to_string(rows) + " rows", "heap", "row", heap / rows, valueBytes / rows, kAim};
}

RatioRow MeasureCurrent(int rows) {
  KT::CurrZentapDbEngine engine;
  return Measure("currZentapDeviceInfo", rows, [&](int i) {
    const CurrZentapDeviceInfo device = SampleDevice(i);
    engine.AddZentapDeviceInfo(SampleKey(i), device);
    return RowBytes(SampleKey(i), device);
  });
}

RatioRow MeasureTrusted(int rows) {
  KT::TrustedZentapDbEngine engine;
  return Measure("trustedZentapDeviceInfo", rows, [&](int i) {
    const BluetoothDeviceSummary device = SampleTrustedDevice(i);
    engine.AddZentapDeviceInfo(SampleKey(i), device);
    return RowBytes(SampleKey(i), device);
  });
}

RatioRow MeasurePeers(int rows) {
  KT::PeerDeviceDbEngine engine;
  return Measure("PEER_DEVICE", rows, [&](int i) {
    engine.AddPeerDevice(SampleKey(i), SampleKey(-i - 1));
    return RowBytes(SampleKey(i), SampleKey(-i - 1));
  });
}

}  // namespace

std::vector<RatioRow> MeasureRowMemory() {
  std::vector<RatioRow> table;
  for (const int rows : {1'000, 10'000}) {
    table.push_back(MeasureCurrent(rows));
    table.push_back(MeasureTrusted(rows));
    table.push_back(MeasurePeers(rows));
  }
  return table;
}

}  // namespace bench
