// How many bytes a message takes, without encoding it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

#include "codec/DeviceFieldVisitors.h"
#include "codec/messages/Message.h"

namespace KT {

// The bytes of a field besides the text of a string: its length prefix, or the integer itself.
template <class Value>
inline constexpr std::size_t kFixedBytes = sizeof(std::int32_t);
template <>
inline constexpr std::size_t kFixedBytes<std::int64_t> = sizeof(std::int64_t);
template <>
inline constexpr std::size_t kFixedBytes<std::string> = sizeof(std::int16_t);

// The bytes of a record with nothing but empty strings.
template <Profile profile>
inline constexpr std::size_t kSmallestRecordBytes = std::apply(
    []<class... Field>(const Field&... field) {
      return (std::size_t{0} + ... + (field.In(profile) ? kFixedBytes<typename Field::Value> : 0));
    },
    kFieldsOf<ProfileRecord<profile>>);

// How many records of a list response are written: `count` of them, which has to be the size of the list. A record that
// is not there is not written.
template <class Record>
std::size_t RecordsToWrite(std::int32_t count, const std::vector<Record>& list) {
  return std::min(static_cast<std::size_t>(std::max(count, 0)), list.size());
}

// Adds up the visited fields.
class SizeVisitor {
 public:
  std::size_t Total() const { return total_; }

  template <class Value>
  void operator()(const char*, const Value&) {
    total_ += kFixedBytes<Value>;
  }
  void operator()(const char*, const std::string& text) { total_ += kFixedBytes<std::string> + text.size(); }

  template <class Record, Profile profile>
  void operator()(const char*, const Record& record, RecordAs<profile>) {
    ForEachField<profile>(record, [this](const char* name, const auto& value) { (*this)(name, value); });
  }

  template <class Record, Profile profile>
  void operator()(const char* countName, const char* listName, const std::int32_t& count,
                  const std::vector<Record>& list, RecordAs<profile> encoding) {
    (*this)(countName, count);
    for (std::size_t i = 0; i < RecordsToWrite(count, list); ++i) (*this)(listName, list[i], encoding);
  }

 private:
  std::size_t total_ = 0;
};

// The size of a message's payload in bytes, were there no limit: compare it with kMaxPayloadBytes before making a
// parcel.
template <class MessageType>
std::size_t EncodedSize(const MessageType& message) {
  SizeVisitor size;
  MessageType::Fields(message, size);
  return size.Total();
}

}  // namespace KT
