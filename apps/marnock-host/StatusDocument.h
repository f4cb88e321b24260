// What a host tells whoever asks for its status.
#pragma once

#include <chrono>
#include <string>

#include "platform/ipc/IPCMessageHub.h"
#include "service/ServiceStatus.h"

namespace KT {

// The document of docs/status.md: one line of JSON in ASCII, some two kilobytes.
std::string StatusDocument(std::chrono::seconds uptime, const HubCounters& hub, const ServiceStatus& service);

}  // namespace KT
