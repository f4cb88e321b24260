#include "apps/marnockctl/RecordInput.h"

#include <stdexcept>
#include <type_traits>

#include "apps/json/ByteText.h"
#include "apps/json/RecordJson.h"
#include "apps/marnockctl/AnswerSize.h"
#include "client/InputChecks.h"
#include "codec/DeviceFieldVisitors.h"
#include "platform/program/WholeInput.h"

namespace KT {

namespace {

// No record that can be sent needs more, even with every byte escaped in the JSON.
constexpr std::size_t kMaxFileBytes = 1024 * 1024;

std::string ReadFile(const std::string& file) {
  return file == "-" ? platform::ReadStandardInput(kMaxFileBytes) : platform::ReadWholeFile(file, kMaxFileBytes);
}

// What the table keeps of a record.
template <DeviceTable table, class Record>
Record StoredPart(const Record& record) {
  Record stored;
  ForEachColumn<table>([&](const auto& field) { stored.*field.member = record.*field.member; });
  return stored;
}

}  // namespace

template <class Family>
typename Family::Record ReadRecordInput(const DeviceSet<Family>& command) {
  if (command.file.empty() && command.fields.empty()) {
    throw std::runtime_error("no device given: name a FILE, - for standard input, or fields with --field NAME=VALUE");
  }
  typename Family::Record record;
  if (!command.file.empty()) {
    const std::string name = command.file == "-" ? "standard input" : command.file;
    try {
      ReadRecord(ParseJson(ReadFile(command.file)), "the device", record);
    } catch (const std::runtime_error& error) {
      throw std::runtime_error(name + ": " + error.what());
    }
  }
  for (const std::string& field : command.fields) {
    const auto equals = field.find('=');
    if (equals == std::string::npos) {
      throw std::runtime_error("--field " + ToTerminalText(field) + ": expected NAME=VALUE");
    }
    SetField(record, field.substr(0, equals), field.substr(equals + 1));
  }
  return record;
}

template <class Record>
std::optional<std::string> WhyNotSendable(const Record& record) {
  std::optional<std::string> reason;
  ForEachField(record, [&reason](const char* name, const auto& value) {
    if constexpr (std::is_same_v<std::remove_cvref_t<decltype(value)>, std::string>) {
      if (auto why = WhyNotAString(name, value); why.has_value()) {
        reason = std::move(why);
      }
    }
  });
  return reason;
}

template <class Family>
std::optional<std::string> WhyNotReadable(const typename Family::Record& record, const std::string& pkgName) {
  typename Family::GetResponse answer;
  answer.pkgName = pkgName;
  answer.info = StoredPart<Family::kTable>(record);
  if (answer.info == typename Family::Record{}) {
    return "the device holds only default values: a get could not tell it from one that is not there";
  }
  return WhyNotAnAnswer(answer);
}

template BluetoothDeviceSummary ReadRecordInput(const DeviceSet<TrustedFamily>&);
template CurrZentapDeviceInfo ReadRecordInput(const DeviceSet<CurrentFamily>&);
template std::optional<std::string> WhyNotSendable(const BluetoothDeviceSummary&);
template std::optional<std::string> WhyNotSendable(const CurrZentapDeviceInfo&);
template std::optional<std::string> WhyNotReadable<TrustedFamily>(const BluetoothDeviceSummary&, const std::string&);
template std::optional<std::string> WhyNotReadable<CurrentFamily>(const CurrZentapDeviceInfo&, const std::string&);

}  // namespace KT
