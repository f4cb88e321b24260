// The way of tests into the service.
#pragma once

#include "service/Marnock.h"

namespace KT {

// Makes and destroys services, which outside of tests only GetInstance does, and reaches their private operations.
class MarnockTestAccess {
 public:
  static Marnock* Make() { return new Marnock; }
  static void Destroy(Marnock* service) { delete service; }
  static bool PostIpc(Marnock& service, int a, int b, int c, char* data, int len) {
    return service.PostIpc(a, b, c, data, len);
  }
  static void RegisterIpc(Marnock& service) { service.RegisterIpc(); }
  static void UnRegisterIpc(Marnock& service) { service.UnRegisterIpc(); }
};

}  // namespace KT
