// Device records as JSON objects: one member a field, under the field's name.
#pragma once

#include <string>

#include "apps/json/JsonDocument.h"
#include "codec/BluetoothDeviceSummary.h"
#include "codec/CurrZentapDeviceInfo.h"

// Numbers are JSON integers within the field's range, bools true or false, strings as ByteText.h has them. `Record` is
// BluetoothDeviceSummary or CurrZentapDeviceInfo.
namespace KT {

// Every field of the record, in its order.
template <class Record>
Json RecordToJson(const Record& record);

// Sets the fields that `object` names; the others stay. Throws std::runtime_error that names the place when a field is
// unknown, of the wrong type or out of range; `place` is what to call the object, for example "trusted[2]".
template <class Record>
void ReadRecord(const Json& object, const std::string& place, Record& record);

// Sets one field from text: an integer in decimals, true or false, or the string itself. Throws std::runtime_error that
// names the field.
template <class Record>
void SetField(Record& record, const std::string& name, const std::string& text);

}  // namespace KT
