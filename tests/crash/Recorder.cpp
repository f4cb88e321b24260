#include "tests/crash/Recorder.h"

#include <algorithm>

namespace crash {

bool Recording::IsAcceptable(const Rows& rows, std::size_t count) const {
  const auto isBefore = [&](const Moment& moment) { return moment.events <= count; };
  const auto underWay = std::find_if_not(moments.begin(), moments.end(), isBefore);
  const auto end = underWay == moments.end() ? underWay : underWay + 1;
  auto lastSaved = underWay - 1;
  while (!lastSaved->isSaved) {
    --lastSaved;
  }
  return std::any_of(lastSaved, end, [&](const Moment& moment) { return moment.rows == rows; });
}

Recorder::Recorder(const support::DiskImage& start)
    : start_(start),
      machine_(std::make_unique<support::MemoryMachine>(start)),
      engine_(std::make_unique<KT::TrustedZentapDbEngine>()) {
  moments_.push_back(Now(true));
}

bool Recorder::Change(const std::function<void(KT::TrustedZentapDbEngine&)>& change) {
  change(*engine_);
  const bool isSaved = engine_->SaveZentapDbIntoDisk();
  moments_.push_back(Now(isSaved));
  return isSaved;
}

Recording Recorder::Take() { return {start_, Disk().Events(), std::move(moments_)}; }

Moment Recorder::Now(bool isSaved) { return {Disk().Events().size(), isSaved, RowsOf(*engine_)}; }

Rows RowsOf(KT::TrustedZentapDbEngine& engine) {
  Rows rows;
  engine.GetZentapDeviceInfoList(rows);
  return rows;
}

BluetoothDeviceSummary Device(const std::string& name, std::size_t bytes) {
  BluetoothDeviceSummary device;
  device.summary = name;
  // No two pages of it are alike.
  for (int line = 0; device.devName.size() < bytes; ++line) {
    device.devName += name + " " + std::to_string(line) + ", ";
  }
  device.devName.resize(bytes);
  return device;
}

}  // namespace crash
