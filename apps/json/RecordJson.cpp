#include "apps/json/RecordJson.h"

#include <charconv>
#include <cstdint>
#include <limits>
#include <optional>
#include <stdexcept>
#include <type_traits>

#include "apps/json/ByteText.h"
#include "codec/DeviceFieldVisitors.h"

namespace KT {

namespace {

template <class Integer>
std::string RangeOf() {
  return std::to_string(std::numeric_limits<Integer>::min()) + " to " +
         std::to_string(std::numeric_limits<Integer>::max());
}

// One overload a type of field: from JSON, from text. Each returns what was expected instead, or an empty string.
std::string Read(const Json& value, bool& field) {
  if (!value.is_boolean()) return "true or false";
  field = value.get<bool>();
  return {};
}

std::string Read(const Json& value, std::string& field) {
  auto bytes = BytesFromJson(value);
  if (!bytes.has_value()) return "a string, or {\"hex\": \"...\"} with two digits a byte";
  field = *std::move(bytes);
  return {};
}

// Whether a JSON integer lies in the range of `Integer`; the parser keeps what passes 2^63 unsigned.
template <class Integer>
bool Fits(const Json& value) {
  if (value.is_number_unsigned()) {
    return value.get<std::uint64_t>() <= static_cast<std::uint64_t>(std::numeric_limits<Integer>::max());
  }
  const auto number = value.get<std::int64_t>();
  return number >= std::int64_t{std::numeric_limits<Integer>::min()} &&
         (std::is_same_v<Integer, std::int64_t> ||
          number <= static_cast<std::int64_t>(std::numeric_limits<Integer>::max()));
}

template <class Integer>
requires std::is_integral_v<Integer> std::string Read(const Json& value, Integer& field) {
  if (!value.is_number_integer() || !Fits<Integer>(value)) return "an integer from " + RangeOf<Integer>();
  field = value.get<Integer>();
  return {};
}

// What stands where something else was expected. Values that hold others are not spelled out: they may be large, and so
// deeply nested that spelling them out would need more stack than there is.
std::string Found(const Json& value) {
  if (value.is_object()) return "an object";
  if (value.is_array()) return "an array";
  if (value.is_string()) return "\"" + ToTerminalText(value.get<std::string>()) + "\"";
  return value.dump();
}

std::string Parse(const std::string& text, bool& field) {
  if (text != "true" && text != "false") return "true or false";
  field = text == "true";
  return {};
}

std::string Parse(const std::string& text, std::string& field) {
  field = text;
  return {};
}

template <class Integer>
requires std::is_integral_v<Integer> std::string Parse(const std::string& text, Integer& field) {
  Integer number{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return "an integer from " + RangeOf<Integer>();
  field = number;
  return {};
}

[[noreturn]] void Refuse(const std::string& place, const std::string& name, const std::string& expected,
                         const std::string& found) {
  throw std::runtime_error(place + name + ": expected " + expected + ", found " + found);
}

}  // namespace

template <class Record>
Json RecordToJson(const Record& record) {
  Json object = Json::object();
  ForEachField(record, [&object](const char* name, const auto& value) {
    if constexpr (std::is_same_v<std::remove_cvref_t<decltype(value)>, std::string>) {
      object[name] = ToJson(value);
    } else {
      object[name] = value;
    }
  });
  return object;
}

template <class Record>
void ReadRecord(const Json& object, const std::string& place, Record& record) {
  if (!object.is_object()) {
    throw std::runtime_error(place + ": expected an object with the fields of a device");
  }
  for (const auto& [name, value] : object.items()) {
    std::string expected;
    const bool known =
        VisitField(record, name, [&expected, &value = value](auto& field) { expected = Read(value, field); });
    if (!known) {
      throw std::runtime_error(place + ": unknown field \"" + ToTerminalText(name) + "\"");
    }
    if (!expected.empty()) {
      Refuse(place + ".", name, expected, Found(value));
    }
  }
}

template <class Record>
void SetField(Record& record, const std::string& name, const std::string& text) {
  std::string expected;
  if (!VisitField(record, name, [&](auto& field) { expected = Parse(text, field); })) {
    throw std::runtime_error("unknown field \"" + ToTerminalText(name) + "\"");
  }
  if (!expected.empty()) {
    Refuse("", name, expected, "\"" + ToTerminalText(text) + "\"");
  }
}

template Json RecordToJson(const BluetoothDeviceSummary&);
template Json RecordToJson(const CurrZentapDeviceInfo&);
template void ReadRecord(const Json&, const std::string&, BluetoothDeviceSummary&);
template void ReadRecord(const Json&, const std::string&, CurrZentapDeviceInfo&);
template void SetField(BluetoothDeviceSummary&, const std::string&, const std::string&);
template void SetField(CurrZentapDeviceInfo&, const std::string&, const std::string&);

}  // namespace KT
