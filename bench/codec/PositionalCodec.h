// What one would write by hand for these bytes and nothing else: field after field into a buffer that is there already,
// with a check of the room that is left, no parcel, no list of results and no virtual calls. The floor that the
// messages' encoding is measured against.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "codec/BluetoothDeviceSummary.h"
#include "codec/CurrZentapDeviceInfo.h"

namespace bench {

class PositionalWriter {
 public:
  PositionalWriter(std::uint8_t* buffer, std::size_t size) : start_(buffer), cursor_(buffer), end_(buffer + size) {}

  template <class Integer>
  void Put(Integer value) {
    Append(&value, sizeof(value));
  }
  void Put(bool value) { Put<std::int32_t>(value ? 1 : 0); }
  void Put(const std::string& text) {
    Put(static_cast<std::uint16_t>(text.size()));
    Append(text.data(), text.size());
  }

  bool Fits() const { return fits_; }
  std::size_t Size() const { return static_cast<std::size_t>(cursor_ - start_); }

 private:
  void Append(const void* bytes, std::size_t size) {
    if (static_cast<std::size_t>(end_ - cursor_) < size) {
      fits_ = false;
      return;
    }
    std::memcpy(cursor_, bytes, size);
    cursor_ += size;
  }

  std::uint8_t* start_;
  std::uint8_t* cursor_;
  std::uint8_t* end_;
  bool fits_ = true;
};

class PositionalReader {
 public:
  PositionalReader(const std::uint8_t* buffer, std::size_t size) : cursor_(buffer), end_(buffer + size) {}

  template <class Integer>
  void Take(Integer& value) {
    if (const std::uint8_t* const bytes = Next(sizeof(value)); bytes != nullptr) {
      std::memcpy(&value, bytes, sizeof(value));
    }
  }
  void Take(bool& value) {
    std::int32_t number = 0;
    Take(number);
    value = number != 0;
  }
  void Take(std::string& text) {
    std::int16_t length = 0;
    Take(length);
    if (length <= 0) return;
    const auto size = static_cast<std::size_t>(length);
    if (const std::uint8_t* const bytes = Next(size); bytes != nullptr) {
      text.assign(reinterpret_cast<const char*>(bytes), size);
    }
  }

 private:
  // The next `size` bytes, or null when there are not so many.
  const std::uint8_t* Next(std::size_t size) {
    if (static_cast<std::size_t>(end_ - cursor_) < size) {
      cursor_ = end_;
      return nullptr;
    }
    const std::uint8_t* const bytes = cursor_;
    cursor_ += size;
    return bytes;
  }

  const std::uint8_t* cursor_;
  const std::uint8_t* end_;
};

// The payloads measured, in the order of their bytes.
struct PlainSetCurrent {  // 32 fields
  std::string pkgName;
  std::string sumId;
  CurrZentapDeviceInfo info;
};
struct PlainGetCurrent {  // 31 fields
  std::string pkgName;
  std::int32_t result = 0;
  CurrZentapDeviceInfo info;
};
struct PlainGetTrusted {  // 24 fields
  std::string pkgName;
  std::int32_t result = 0;
  BluetoothDeviceSummary info;
};
struct PlainCurrentList {
  std::string pkgName;
  std::int32_t count = 0;
  std::vector<CurrZentapDeviceInfo> list;
  std::int32_t result = 0;
};
struct PlainTrustedList {
  std::string pkgName;
  std::int32_t count = 0;
  std::vector<BluetoothDeviceSummary> list;
  std::int32_t result = 0;
};

void Encode(const PlainSetCurrent& message, PositionalWriter& writer);
void Encode(const PlainGetCurrent& message, PositionalWriter& writer);
void Encode(const PlainGetTrusted& message, PositionalWriter& writer);
void Encode(const PlainCurrentList& message, PositionalWriter& writer);
void Encode(const PlainTrustedList& message, PositionalWriter& writer);

void Decode(PositionalReader& reader, PlainSetCurrent& message);
void Decode(PositionalReader& reader, PlainGetCurrent& message);
void Decode(PositionalReader& reader, PlainGetTrusted& message);
void Decode(PositionalReader& reader, PlainCurrentList& message);
void Decode(PositionalReader& reader, PlainTrustedList& message);

}  // namespace bench
