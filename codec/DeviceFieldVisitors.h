// Walks over the field tables. Each is unrolled at compile time into straight code for the fields concerned.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

#include "codec/DeviceFields.h"

namespace KT {

template <Profile profile>
using ProfileRecord = std::conditional_t<profile == Profile::Trusted, BluetoothDeviceSummary, CurrZentapDeviceInfo>;

template <DeviceTable table>
using TableRecord = std::conditional_t<table == DeviceTable::Trusted, BluetoothDeviceSummary, CurrZentapDeviceInfo>;

// All fields of a record type, in stream order.
template <class Record>
inline constexpr const auto& kFieldsOf = kCurrentFields;
template <>
inline constexpr const auto& kFieldsOf<BluetoothDeviceSummary> = kSummaryFields;

template <class Record>
inline constexpr std::size_t kFieldTotal = std::tuple_size_v<std::remove_cvref_t<decltype(kFieldsOf<Record>)>>;

namespace internal {

template <class Record, class Predicate>
constexpr std::size_t CountFields(Predicate wanted) {
  return std::apply([&](const auto&... field) { return (std::size_t{0} + ... + (wanted(field) ? 1 : 0)); },
                    kFieldsOf<Record>);
}

// At index i the place in the field table of the field that is stored at column kSumIdColumn + 1 + i. Constant
// evaluation stops at a column that is out of range; a column named twice leaves another one without a field, which
// the kNoField entry then shows.
template <DeviceTable table, std::size_t count>
constexpr auto FieldsByColumn() {
  using Record = TableRecord<table>;
  std::array<std::size_t, count> order{};
  order.fill(kFieldTotal<Record>);
  std::size_t place = 0;
  std::apply(
      [&](const auto&... field) {
        ((field.Column(table) == kNotStored
              ? void()
              : void(order.at(static_cast<std::size_t>(field.Column(table) - kSumIdColumn - 1)) = place),
          ++place),
         ...);
      },
      kFieldsOf<Record>);
  return order;
}

}  // namespace internal

// How many fields a profile carries, and how many columns besides id and sumId a table has.
template <Profile profile>
inline constexpr std::size_t kProfileFieldCount = internal::CountFields<ProfileRecord<profile>>([](const auto& field) {
  return field.In(profile);
});
template <DeviceTable table>
inline constexpr std::size_t kStoredFieldCount = internal::CountFields<TableRecord<table>>([](const auto& field) {
  return field.Column(table) != kNotStored;
});

static_assert(kProfileFieldCount<Profile::Full> == 32);
static_assert(kProfileFieldCount<Profile::CurrentReadBack> == 31);
static_assert(kProfileFieldCount<Profile::Trusted> == 24);
static_assert(1 + kStoredFieldCount<DeviceTable::Current> == 29, "placeholders of an INSERT, sumId's included");
static_assert(1 + kStoredFieldCount<DeviceTable::Trusted> == 23, "placeholders of an INSERT, sumId's included");

namespace internal {

template <DeviceTable table>
inline constexpr auto kColumnOrder = FieldsByColumn<table, kStoredFieldCount<table>>();

constexpr bool EveryColumnHasAField(const auto& order, std::size_t noField) {
  for (const std::size_t place : order) {
    if (place == noField) return false;
  }
  return true;
}
static_assert(EveryColumnHasAField(kColumnOrder<DeviceTable::Current>, kFieldTotal<CurrZentapDeviceInfo>));
static_assert(EveryColumnHasAField(kColumnOrder<DeviceTable::Trusted>, kFieldTotal<BluetoothDeviceSummary>));

}  // namespace internal

// visit(field) for every stored field of a table, in column order, from the column after sumId. `field` is a
// DeviceField<Record, Value>; Value tells a column's type.
template <DeviceTable table, class Visitor>
constexpr void ForEachColumn(Visitor&& visit) {
  [&]<std::size_t... column>(std::index_sequence<column...>) {
    (visit(std::get<internal::kColumnOrder<table>[column]>(kFieldsOf<TableRecord<table>>)), ...);
  }
  (std::make_index_sequence<kStoredFieldCount<table>>());
}

// visit(name, value) for every stored field of a record, in column order. `record` may be const; `value` refers into
// it.
template <DeviceTable table, class Record, class Visitor>
constexpr void ForEachColumn(Record& record, Visitor&& visit) {
  static_assert(std::is_same_v<std::remove_const_t<Record>, TableRecord<table>>);
  ForEachColumn<table>([&](const auto& field) { visit(field.name, record.*field.member); });
}

namespace internal {

template <Profile profile, std::size_t place, class Record, class Visitor>
constexpr void VisitIfCarried(Record& record, Visitor& visit) {
  constexpr const auto& field = std::get<place>(kFieldsOf<ProfileRecord<profile>>);
  if constexpr (field.In(profile)) visit(field.name, record.*field.member);
}

// The visitor is taken by value: as a local of this function it can stay in registers throughout the walk.
template <Profile profile, class Record, class Visitor, std::size_t... place>
constexpr void VisitCarried(Record& record, Visitor visit, std::index_sequence<place...>) {
  (VisitIfCarried<profile, place>(record, visit), ...);
}

}  // namespace internal

// visit(name, value) for every field of a record that a profile carries, in stream order. `visit` is copied.
template <Profile profile, class Record, class Visitor>
constexpr void ForEachField(Record& record, Visitor visit) {
  static_assert(std::is_same_v<std::remove_const_t<Record>, ProfileRecord<profile>>);
  internal::VisitCarried<profile>(record, visit, std::make_index_sequence<kFieldTotal<ProfileRecord<profile>>>());
}

// visit(name, value) for every field of a record, in stream order, whatever carries or stores it.
template <class Record, class Visitor>
constexpr void ForEachField(Record& record, Visitor&& visit) {
  std::apply([&](const auto&... field) { (visit(field.name, record.*field.member), ...); },
             kFieldsOf<std::remove_const_t<Record>>);
}

// visit(value) for the field of that name. Returns whether the record has one.
template <class Record, class Visitor>
constexpr bool VisitField(Record& record, std::string_view name, Visitor&& visit) {
  return std::apply(
      [&](const auto&... field) { return ((name == field.name && (visit(record.*field.member), true)) || ...); },
      kFieldsOf<std::remove_const_t<Record>>);
}

}  // namespace KT
