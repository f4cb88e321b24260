// The visitors that write and read a message's list of fields, and the messages' operations on top of them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "codec/DeviceFieldVisitors.h"
#include "codec/MessageParcel.h"
#include "codec/PayloadLimits.h"
#include "codec/messages/EncodedSize.h"
#include "codec/messages/Message.h"

namespace KT {

// Writes the visited fields into a parcel. A write that fails is recorded there and the next one made all the same.
class WriteVisitor {
 public:
  explicit WriteVisitor(MessageParcel& parcel) : parcel_(parcel) {}

  void operator()(const char*, const std::string& text) { parcel_.WriteText(text); }
  void operator()(const char*, const std::int64_t& value) { parcel_.WriteInt64(value); }
  void operator()(const char*, const std::int32_t& value) { parcel_.WriteInt32(value); }
  void operator()(const char*, const std::uint32_t& value) { parcel_.WriteInt32(static_cast<std::int32_t>(value)); }
  void operator()(const char*, const bool& value) { parcel_.WriteInt32(value ? 1 : 0); }

  template <class Record, Profile profile>
  void operator()(const char*, const Record& record, RecordAs<profile>) {
    ForEachField<profile>(record, *this);
  }

  template <class Record, Profile profile>
  void operator()(const char* countName, const char* listName, const std::int32_t& count,
                  const std::vector<Record>& list, RecordAs<profile> encoding) {
    (*this)(countName, count);
    for (std::size_t i = 0; i < RecordsToWrite(count, list); ++i) (*this)(listName, list[i], encoding);
  }

 private:
  MessageParcel& parcel_;
};

// Reads the visited fields from a parcel.
class ReadVisitor {
 public:
  explicit ReadVisitor(MessageParcel& parcel) : parcel_(parcel) {}

  void operator()(const char*, std::string& text) { parcel_.ReadText(text); }
  void operator()(const char*, std::int64_t& value) { value = parcel_.ReadInt64(); }
  void operator()(const char*, std::int32_t& value) { value = parcel_.ReadInt32(); }
  void operator()(const char*, std::uint32_t& value) { value = static_cast<std::uint32_t>(parcel_.ReadInt32()); }
  void operator()(const char*, bool& value) { value = parcel_.ReadInt32() != 0; }

  // A field that the profile leaves out gets its default.
  template <class Record, Profile profile>
  void operator()(const char*, Record& record, RecordAs<profile>) {
    if constexpr (kProfileFieldCount<profile> < kFieldTotal<Record>) record = Record{};
    ForEachField<profile>(record, *this);
  }

  // Appends to `list`. `count` keeps the value read, however absurd; records that no payload can hold are not appended.
  template <class Record, Profile profile>
  void operator()(const char* countName, const char*, std::int32_t& count, std::vector<Record>& list,
                  RecordAs<profile>) {
    (*this)(countName, count);
    const std::size_t records = std::min(static_cast<std::size_t>(std::max(count, 0)), kMostRecords<profile>);
    for (std::size_t i = 0; i < records; ++i) ForEachField<profile>(list.emplace_back(), *this);
  }

 private:
  // One more than fit into the largest payload. Without a limit four bytes of a peer's could ask for endless memory.
  template <Profile profile>
  static constexpr std::size_t kMostRecords =
      static_cast<std::size_t>(kMaxPayloadBytes) / kSmallestRecordBytes<profile> + 1;

  MessageParcel& parcel_;
};

template <class Derived>
void Message<Derived>::Serialize(std::shared_ptr<MessageParcel> parcel) {
  if (parcel == nullptr) return;
  Derived::Fields(static_cast<const Derived&>(*this), WriteVisitor(*parcel));
}

template <class Derived>
void Message<Derived>::Deserialize(std::shared_ptr<MessageParcel> parcel) {
  if (parcel == nullptr) return;
  Derived::Fields(static_cast<Derived&>(*this), ReadVisitor(*parcel));
}

}  // namespace KT
