// The devices that are connected now.
#pragma once

#include "persistence/TapDbEngine.h"

namespace KT {

class CurrZentapDbEngine final : public TapDbEngine<CurrZentapDeviceInfo> {
 public:
  CurrZentapDbEngine();
};

}  // namespace KT
