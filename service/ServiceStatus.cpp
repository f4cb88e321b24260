#include "service/ServiceStatus.h"

#include <cstring>

#include "service/RequestTable.h"

namespace KT {

namespace {

static_assert(std::tuple_size_v<decltype(kRequestTable)> == kRequestCount);

const char* LastComponent(const char* qualifiedName) { return std::strrchr(qualifiedName, ':') + 1; }

}  // namespace

// A class, since GCC takes dllimport away from an exported function that is named as a friend.
class StatusAccess {
 public:
  static ServiceStatus Status(const Marnock& service) {
    ServiceStatus status{.peer = service.store_.Saves(StoreTable::Peer),
                         .current = service.store_.Saves(StoreTable::Current),
                         .trusted = service.store_.Saves(StoreTable::Trusted),
                         .requests = {}};
    std::apply([&](const auto&... row) { status.requests = {Request(service, row)...}; }, kRequestTable);
    return status;
  }

  static void Observe(Marnock& service, UnsavedChangeObserver observer) {
    service.store_.SetUnsavedChangeObserver(observer);
  }

 private:
  template <class Row>
  static RequestStatus Request(const Marnock& service, const Row& row) {
    return {row.Code(), LastComponent(row.function), service.tallies_[Marnock::TallyIndex(row.Code())].Counts()};
  }
};

ServiceStatus GetServiceStatus(const Marnock& service) { return StatusAccess::Status(service); }

void ObserveUnsavedChanges(Marnock& service, UnsavedChangeObserver observer) {
  StatusAccess::Observe(service, observer);
}

}  // namespace KT
