// The devices that the user has trusted.
#pragma once

#include "persistence/TapDbEngine.h"

namespace KT {

class TrustedZentapDbEngine final : public TapDbEngine<BluetoothDeviceSummary> {
 public:
  TrustedZentapDbEngine();

  // DbEngine::SaveDbIntoDisk with a log line before it.
  bool SaveZentapDbIntoDisk();
};

}  // namespace KT
