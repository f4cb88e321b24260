// The base of every request and response message.
#pragma once

#include <memory>

#include "codec/MessageParcel.h"

namespace KT {

// Both operations do nothing with an empty pointer, report nothing and throw nothing but std::bad_alloc. What became of
// the writes is in the parcel's data size.
class IpcRequest {
 public:
  // Writes the message's fields, in order.
  virtual void Serialize(std::shared_ptr<MessageParcel> parcel) = 0;
  // Reads the same fields in the same order.
  virtual void Deserialize(std::shared_ptr<MessageParcel> parcel) = 0;

  // Adds nothing to the comparison of two messages of one class, which is field by field.
  bool operator==(const IpcRequest&) const = default;

 protected:
  // The interface has two slots and no more: a message is destroyed as what it is, never through its base.
  ~IpcRequest() = default;
  IpcRequest() = default;
  IpcRequest(const IpcRequest&) = default;
  IpcRequest& operator=(const IpcRequest&) = default;
};

}  // namespace KT
