// What a host can see of the service while it runs: nothing of what is stored, only how often what happened.
#pragma once

#include <array>
#include <cstddef>

#include "marnock_export.h"
#include "persistence/SaveCounts.h"
#include "service/RequestCounts.h"

namespace KT {

class Marnock;

struct RequestStatus {
  int code = 0;                // of the request
  const char* name = nullptr;  // its handler's, without class and namespace; lives as long as the library
  RequestCounts counts;
};

inline constexpr std::size_t kRequestCount = 11;

struct ServiceStatus {
  SaveCounts peer;  // by table
  SaveCounts current;
  SaveCounts trusted;
  std::array<RequestStatus, kRequestCount> requests;  // in the order of their codes
};

// The counts since the service was built. Any thread, also while a request is handled: each number is right for itself,
// and those of a request under way may be between two states.
MARNOCK_EXPORT ServiceStatus GetServiceStatus(const Marnock& service);

// Has `observer` told of every change that is answered with 0 and is not on the disk; null for none. The library logs
// that the save failed (level 4, docs/operating.md), and answers as if it had not. To be called before requests can
// arrive.
MARNOCK_EXPORT void ObserveUnsavedChanges(Marnock& service, UnsavedChangeObserver observer);

}  // namespace KT
