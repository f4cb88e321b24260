#include "persistence/CurrZentapDbEngine.h"

namespace KT {

namespace {

constexpr TapEngineNames kNames{
    .tableName = "currZentapDeviceInfo",
    .filePrefix = "CurrentZentapDeviceInfo1",
    .init = "KT::CurrZentapDbEngine::Init",
    .add = "KT::CurrZentapDbEngine::AddZentapDeviceInfo",
    .remove = "KT::CurrZentapDbEngine::DeleteZentapDeviceInfo",
    .update = "KT::CurrZentapDbEngine::UpdateZentapDeviceInfo",
    .updateList = "KT::CurrZentapDbEngine::UpdateZentapDeviceInfoList",
    .getList = "KT::CurrZentapDbEngine::GetZentapDeviceInfoList",
    .get = "KT::CurrZentapDbEngine::GetZentapDeviceInfo",
};

}  // namespace

CurrZentapDbEngine::CurrZentapDbEngine() : TapDbEngine(kNames) {}

}  // namespace KT
