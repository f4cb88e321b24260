// Other modules call the codec through its virtual tables, so the order of the slots is part of its interface. On both
// targets a pointer to a virtual member holds the offset of its slot plus one, in bytes.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

#include "codec/DataStream.h"
#include "codec/IpcRequest.h"

namespace {

using cohesa::DataStream;
using cohesa::IOChannel;
using cohesa::IOStream;
using cohesa::IpcBufferBuild;

// A virtual destructor takes two slots, one that frees the object and one that does not.
constexpr std::size_t kDestructorSlots = 2;

template <class Member>
std::size_t SlotOf(Member member) {
  std::size_t words[2];
  static_assert(sizeof(member) == sizeof(words));
  std::memcpy(words, &member, sizeof(words));
  EXPECT_EQ(words[0] % sizeof(void*), 1U) << "not a virtual member";
  return words[0] / sizeof(void*);
}

// The members whose names stand for a pair, the value first.
template <class Stream, class Value>
constexpr auto ValueForm(Value (Stream::*member)()) {
  return member;
}
template <class Stream, class Value>
constexpr auto ReferenceForm(std::uint32_t (Stream::*member)(Value&)) {
  return member;
}

template <class Stream>
std::vector<std::size_t> StreamSlots() {
  return {
      SlotOf(&Stream::Read),
      SlotOf(ValueForm<Stream, std::int32_t>(&Stream::ReadInt32)),
      SlotOf(ReferenceForm<Stream, std::int32_t>(&Stream::ReadInt32)),
      SlotOf(ValueForm<Stream, std::int16_t>(&Stream::ReadInt16)),
      SlotOf(ReferenceForm<Stream, std::int16_t>(&Stream::ReadInt16)),
      SlotOf(ValueForm<Stream, float>(&Stream::ReadFloat)),
      SlotOf(ReferenceForm<Stream, float>(&Stream::ReadFloat)),
      SlotOf(ValueForm<Stream, double>(&Stream::ReadDouble)),
      SlotOf(ReferenceForm<Stream, double>(&Stream::ReadDouble)),
      SlotOf(ValueForm<Stream, std::uint8_t>(&Stream::ReadInt8)),
      SlotOf(ReferenceForm<Stream, std::uint8_t>(&Stream::ReadInt8)),
      SlotOf(ValueForm<Stream, std::int64_t>(&Stream::ReadInt64)),
      SlotOf(ReferenceForm<Stream, std::int64_t>(&Stream::ReadInt64)),
      SlotOf(ValueForm<Stream, std::string>(&Stream::ReadUtf8String)),
      SlotOf(ReferenceForm<Stream, std::string>(&Stream::ReadUtf8String)),
      SlotOf(&Stream::ReadUtf8StringArray),
      SlotOf(&Stream::ReadLine),
      SlotOf(&Stream::Write),
      SlotOf(&Stream::WriteInt32),
      SlotOf(&Stream::WriteInt16),
      SlotOf(&Stream::WriteFloat),
      SlotOf(&Stream::WriteDouble),
      SlotOf(&Stream::WriteInt8),
      SlotOf(&Stream::WriteInt64),
      SlotOf(&Stream::WriteUtf8String),
      SlotOf(&Stream::WriteUtf8StringArray),
      SlotOf(&Stream::WriteLine),
      SlotOf(&Stream::IsSwapBytes),
      SlotOf(&Stream::SetSwapBytes),
      SlotOf(&Stream::Flush),
  };
}

std::vector<std::size_t> Ascending(std::size_t first, std::size_t count) {
  std::vector<std::size_t> slots(count);
  for (std::size_t i = 0; i < count; ++i) slots[i] = first + i;
  return slots;
}

TEST(SlotOrder, StreamHasItsThirtyOperationsAfterTheDestructor) {
  EXPECT_EQ(StreamSlots<IOStream>(), Ascending(kDestructorSlots, 30));
  EXPECT_EQ(StreamSlots<DataStream>(), Ascending(kDestructorSlots, 30));
}

TEST(SlotOrder, ChannelReadsThenWritesAfterTheDestructor) {
  EXPECT_EQ(SlotOf(&IOChannel::Read), kDestructorSlots);
  EXPECT_EQ(SlotOf(&IOChannel::Write), kDestructorSlots + 1);
  EXPECT_EQ(SlotOf(&IpcBufferBuild::Read), kDestructorSlots);
  EXPECT_EQ(SlotOf(&IpcBufferBuild::Write), kDestructorSlots + 1);
}

TEST(SlotOrder, MessageHasTwoSlotsAndNoDestructor) {
  EXPECT_EQ(SlotOf(&KT::IpcRequest::Serialize), 0U);
  EXPECT_EQ(SlotOf(&KT::IpcRequest::Deserialize), 1U);
  EXPECT_FALSE(std::has_virtual_destructor_v<KT::IpcRequest>);
}

}  // namespace
