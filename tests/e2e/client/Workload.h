// Requests of all eleven kinds over a few keys of one client's own, with the answer that each must get.
#pragma once

#include <cstddef>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "codec/BluetoothDeviceSummary.h"
#include "codec/CurrZentapDeviceInfo.h"
#include "tests/e2e/client/PipelinedClient.h"

namespace e2e {

struct WorkItem {
  int code = 0;
  std::string payload;
  PipelinedClient::Judge judge;
};

// What the service must hold for this client follows from what was sent, since a client's requests are served in order
// and nobody else uses its keys. One in forty requests is a change, so that the disk is not all that is measured.
class Workload {
 public:
  // Everybody may change peers; the devices of more than a few clients would not fit the replies to a list.
  enum class Changes { All, Peers };

  // `client` tells the keys and device names of one client from those of the others. The first requests delete what an
  // earlier client of that number left.
  explicit Workload(int client, Changes changes = Changes::All);

  WorkItem Next();

 private:
  template <class Record>
  using Devices = std::vector<std::pair<std::string, Record>>;  // key and record, in the order of the table

  WorkItem Clear(std::size_t step);
  WorkItem Change();
  WorkItem Read();

  template <class Request, class Record>
  WorkItem SetDevice(Devices<Record>& devices);
  template <class Request, class Record>
  WorkItem DeleteDevice(Devices<Record>& devices, const std::string& key);
  template <class Request, class Record>
  WorkItem GetDevice(const Devices<Record>& devices);
  template <class Request, class Record>
  WorkItem ListDevices(const Devices<Record>& devices);
  WorkItem SetPeer();
  WorkItem DeletePeer(const std::string& key);
  WorkItem GetPeer();

  std::size_t Below(std::size_t end);
  std::string Key(std::size_t number) const;
  std::string AnyKey();

  const std::string name_;  // the beginning of every key and device name
  std::mt19937 random_;
  const Changes allowed_;
  std::size_t cleared_ = 0;
  int changes_ = 0;
  std::map<std::string, std::string> peers_;
  Devices<BluetoothDeviceSummary> trusted_;
  Devices<CurrZentapDeviceInfo> current_;
};

}  // namespace e2e
