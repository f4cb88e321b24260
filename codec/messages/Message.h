// What the 22 messages share.
//
// A message is a class with public data members, which its user sets before Serialize or reads after Deserialize, and a
// list of them, which says in which order and encoding they travel:
//
//   template <class Self, class Visitor>
//   static void Fields(Self& self, Visitor&& visit) {
//     visit("pkgName", self.pkgName);
//     visit("count", "list", self.count, self.list, kTrustedRecord);
//   }
//
// A request also names its code and its response:
//
//   static constexpr std::int32_t kCode = 0xc40009;
//   using Response = PeerSumSetResponse;
//
// Writing, reading and measuring a message are visitors of that one list. There are no tags in a payload: both sides
// know the message from its code.
#pragma once

#include <memory>
#include <type_traits>

#include "codec/DeviceFields.h"
#include "codec/IpcRequest.h"

namespace KT {

// How a record in a list of fields is encoded.
template <Profile profile>
using RecordAs = std::integral_constant<Profile, profile>;
inline constexpr RecordAs<Profile::Full> kFullRecord{};
inline constexpr RecordAs<Profile::CurrentReadBack> kReadBackRecord{};
inline constexpr RecordAs<Profile::Trusted> kTrustedRecord{};

// Base of the message class `Derived`. Instantiated for each message in the .cpp file of its family.
template <class Derived>
class Message : public IpcRequest {
 public:
  void Serialize(std::shared_ptr<MessageParcel> parcel) final;
  void Deserialize(std::shared_ptr<MessageParcel> parcel) final;

  bool operator==(const Message&) const = default;

 protected:
  ~Message() = default;
  Message() = default;
  Message(const Message&) = default;
  Message& operator=(const Message&) = default;
};

}  // namespace KT
