#include "persistence/DevicePersistence.h"

#include "host/Utils.h"
#include "persistence/DatabaseFiles.h"
#include "platform/logging/LogLine.h"
#include "platform/text/PlenixBase.h"

namespace KT {

namespace {

// How an operation reports that it failed.
struct Operation {
  const char* function;
  const char* message;
  int failureCode;
};

constexpr Operation kSetTrusted{"KT::DevicePersistence::SetTrustedZentapDeviceInfo",
                                "[KTData] Set zentap device info failed.", kResultTapChangeFailed};
constexpr Operation kSetTrustedList{"KT::DevicePersistence::SetTrustedZentapDeviceInfoList",
                                    "[KTData] Set zentap device list info failed.", kResultTapChangeFailed};
constexpr Operation kDeleteTrusted{"KT::DevicePersistence::DeleteTrustedZentapDeviceInfo",
                                   "[KTData] Delete zentap device info failed.", kResultTapChangeFailed};
constexpr Operation kGetTrusted{"KT::DevicePersistence::GetTrustedZentapDeviceInfo",
                                "[KTData] Get zentap device info failed.", kResultReadOrPeerFailed};
constexpr Operation kGetTrustedList{"KT::DevicePersistence::GetTrustedZentapDeviceInfoList",
                                    "[KTData] Get zentap device list info failed.", kResultReadOrPeerFailed};
constexpr Operation kSetCurrent{"KT::DevicePersistence::SetCurrZentapDeviceInfo",
                                "[KTData] Set curr zentap device info failed.", kResultTapChangeFailed};
constexpr Operation kSetCurrentList{"KT::DevicePersistence::SetCurrZentapDeviceInfoList",
                                    "[KTData] Set curr zentap device list info failed.", kResultTapChangeFailed};
constexpr Operation kDeleteCurrent{"KT::DevicePersistence::DeleteCurrZentapDeviceInfo",
                                   "[KTData] Delete curr zentap device info failed.", kResultTapChangeFailed};
constexpr Operation kGetCurrent{"KT::DevicePersistence::GetCurrZentapDeviceInfo",
                                "[KTData] Get curr zentap device info failed.", kResultReadOrPeerFailed};
constexpr Operation kGetCurrentList{"KT::DevicePersistence::GetCurrZentapDeviceInfoList",
                                    "[KTData] Get curr zentap device list info failed.", kResultReadOrPeerFailed};
constexpr Operation kSetPeer{"KT::DevicePersistence::SetPeerDevice", "[KTData] Set peer device info failed.",
                             kResultReadOrPeerFailed};
constexpr Operation kDeletePeer{"KT::DevicePersistence::DeletePeerDevice", "[KTData] Delete peer device info failed.",
                                kResultReadOrPeerFailed};
constexpr Operation kGetPeer{"KT::DevicePersistence::GetPeerDevice", "[KTData] Get peer device failed.",
                             kResultReadOrPeerFailed};

int Answer(const Operation& operation, bool succeeded) {
  if (!succeeded) {
    platform::LogFailure(operation.function, operation.message);
    return operation.failureCode;
  }
  return kResultSuccess;
}

template <class Engine>
bool Save(Engine& engine) {
  return engine.SaveDbIntoDisk(engine.Content());
}

bool Save(TrustedZentapDbEngine& engine) { return engine.SaveZentapDbIntoDisk(); }

StoreTable TableOf(const PeerDeviceDbEngine&) { return StoreTable::Peer; }
StoreTable TableOf(const CurrZentapDbEngine&) { return StoreTable::Current; }
StoreTable TableOf(const TrustedZentapDbEngine&) { return StoreTable::Trusted; }

// The answer to a change of `engine`'s table. The save logs its own failure and does not change the answer.
template <class Engine>
int AnswerAndSave(const Operation& operation, bool succeeded, Engine& engine, UnsavedChangeObserver onUnsavedChange) {
  if (succeeded && !Save(engine) && onUnsavedChange != nullptr) {
    onUnsavedChange(TableOf(engine), engine.Saves());
  }
  return Answer(operation, succeeded);
}

}  // namespace

DevicePersistence::DevicePersistence() = default;

DevicePersistence::~DevicePersistence() {
  Save(peer_);
  Save(trusted_);
  Save(current_);
}

int DevicePersistence::SetTrustedZentapDeviceInfo(const std::string& sumId, const BluetoothDeviceSummary& info) {
  trusted_.DeleteZentapDeviceInfo(sumId);
  return AnswerAndSave(kSetTrusted, trusted_.AddZentapDeviceInfo(sumId, info), trusted_, onUnsavedChange_);
}

int DevicePersistence::SetTrustedZentapDeviceInfoList(const std::vector<BluetoothDeviceSummary>& list) {
  return AnswerAndSave(kSetTrustedList, trusted_.UpdateZentapDeviceInfoList(list), trusted_, onUnsavedChange_);
}

int DevicePersistence::DeleteTrustedZentapDeviceInfo(const std::string& sumId) {
  return AnswerAndSave(kDeleteTrusted, trusted_.DeleteZentapDeviceInfo(sumId), trusted_, onUnsavedChange_);
}

int DevicePersistence::GetTrustedZentapDeviceInfo(const std::string& sumId, BluetoothDeviceSummary& info) {
  return Answer(kGetTrusted, trusted_.GetZentapDeviceInfo(sumId, info));
}

int DevicePersistence::GetTrustedZentapDeviceInfoList(std::vector<BluetoothDeviceSummary>& list) {
  return Answer(kGetTrustedList, trusted_.GetZentapDeviceInfoList(list));
}

int DevicePersistence::SetCurrZentapDeviceInfo(const std::string& sumId, const CurrZentapDeviceInfo& info) {
  current_.DeleteZentapDeviceInfo(sumId);
  return AnswerAndSave(kSetCurrent, current_.AddZentapDeviceInfo(sumId, info), current_, onUnsavedChange_);
}

int DevicePersistence::SetCurrZentapDeviceInfoList(const std::vector<CurrZentapDeviceInfo>& list) {
  return AnswerAndSave(kSetCurrentList, current_.UpdateZentapDeviceInfoList(list), current_, onUnsavedChange_);
}

int DevicePersistence::DeleteCurrZentapDeviceInfo(const std::string& sumId) {
  return AnswerAndSave(kDeleteCurrent, current_.DeleteZentapDeviceInfo(sumId), current_, onUnsavedChange_);
}

int DevicePersistence::GetCurrZentapDeviceInfo(const std::string& sumId, CurrZentapDeviceInfo& info) {
  return Answer(kGetCurrent, current_.GetZentapDeviceInfo(sumId, info));
}

int DevicePersistence::GetCurrZentapDeviceInfoList(std::vector<CurrZentapDeviceInfo>& list) {
  return Answer(kGetCurrentList, current_.GetZentapDeviceInfoList(list));
}

int DevicePersistence::SetPeerDevice(const std::string& udId, const std::string& sumId) {
  peer_.DeletePeerDevice(udId);
  return AnswerAndSave(kSetPeer, peer_.AddPeerDevice(udId, sumId), peer_, onUnsavedChange_);
}

int DevicePersistence::DeletePeerDevice(const std::string& udId) {
  return AnswerAndSave(kDeletePeer, peer_.DeletePeerDevice(udId), peer_, onUnsavedChange_);
}

int DevicePersistence::GetPeerDevice(const std::string& udId, std::string& sumId) {
  return Answer(kGetPeer, peer_.QueryPeerDevice(udId, sumId));
}

bool DevicePersistence::IsDeviceDbExist() const {
  const std::wstring folder = Utils::GetCurrUserDefinePath(kDatabaseFolder);
  return !folder.empty() && FileExists(folder + PlenixBase::UTF8ToUnicode(kDatabaseFileName));
}

SaveCounts DevicePersistence::Saves(StoreTable table) const {
  switch (table) {
    case StoreTable::Peer:
      return peer_.Saves();
    case StoreTable::Current:
      return current_.Saves();
    case StoreTable::Trusted:
      return trusted_.Saves();
  }
  return {};
}

}  // namespace KT
