// The host's door to the start-up import.
#pragma once

#include "marnock_export.h"

namespace KT {

class Marnock;

// Seeds the two tap-device tables from the configuration library: the current one with its paired device, the trusted
// one with its Sonavo devices. Does nothing (and says so in the log) while the guard file
// "G12NJ9DS39D.db" lies in the console user's folder; the library never writes that file, so whoever imports creates
// it, or the next run adds the rows a second time. Failures are logged.
//
// To be called by the thread that called Init, right after it and before requests can arrive: the store has no lock.
MARNOCK_EXPORT void ImportDevicesAtStartup(Marnock& service);

}  // namespace KT
