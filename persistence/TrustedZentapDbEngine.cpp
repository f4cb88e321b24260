#include "persistence/TrustedZentapDbEngine.h"

#include "persistence/Guarded.h"
#include "platform/logging/LogLine.h"

namespace KT {

namespace {

constexpr const char* kSaveZentapDbIntoDisk = "KT::TrustedZentapDbEngine::SaveZentapDbIntoDisk";

constexpr TapEngineNames kNames{
    .tableName = "trustedZentapDeviceInfo",
    .filePrefix = "TrustedZentapDeviceInfo2",
    .init = "KT::TrustedZentapDbEngine::Init",
    .add = "KT::TrustedZentapDbEngine::AddZentapDeviceInfo",
    .remove = "KT::TrustedZentapDbEngine::DeleteZentapDeviceInfo",
    .update = "KT::TrustedZentapDbEngine::UpdateZentapDeviceInfo",
    .updateList = "KT::TrustedZentapDbEngine::UpdateZentapDeviceInfoList",
    .getList = "KT::TrustedZentapDbEngine::GetZentapDeviceInfoList",
    .get = "KT::TrustedZentapDbEngine::GetZentapDeviceInfo",
};

}  // namespace

TrustedZentapDbEngine::TrustedZentapDbEngine() : TapDbEngine(kNames) {}

bool TrustedZentapDbEngine::SaveZentapDbIntoDisk() {
  if (!IsOpen(Content(), kSaveZentapDbIntoDisk)) {
    return false;
  }
  platform::LogProgress(kSaveZentapDbIntoDisk, "[KTData] Save zentap database into disk.");
  return SaveDbIntoDisk(Content());
}

}  // namespace KT
