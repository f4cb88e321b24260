// Any bytes as the JSON that the programs read: the file and the fields of marnockctl's set commands, the host's import
// file and a host's status. Each is taken or refused in one clear line, and a device that was taken survives being
// written and read again.
#include <limits>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "apps/json/ByteText.h"
#include "apps/json/RecordJson.h"
#include "apps/marnock-host/ImportFile.h"
#include "apps/marnockctl/RecordInput.h"
#include "apps/marnockctl/StatusReport.h"
#include "client/InputChecks.h"
#include "codec/DeviceFieldVisitors.h"
#include "fuzz/FuzzInput.h"
#include "platform/ipc/Frame.h"
#include "platform/program/WholeInput.h"

namespace {

using fuzz::FuzzInput;
using fuzz::Require;

constexpr const char* kFileName = "device.json";
constexpr char kSeparator = '\x1e';  // before each field; JSON text never holds it

std::string g_file;

bool IsOneLineOfText(const std::string& text) {
  for (const char byte : text) {
    if (static_cast<unsigned char>(byte) < 0x20 || byte == 0x7f) return false;
  }
  return !text.empty() && platform::ipc::IsUtf8(text);
}

// What `read` returns, or nothing when it refuses.
template <class Read>
auto Taken(Read&& read) -> std::optional<decltype(read())> {
  try {
    return read();
  } catch (const std::runtime_error& refusal) {
    Require(IsOneLineOfText(refusal.what()));
    return std::nullopt;
  }
}

template <class Record>
void CheckSurvives(const Record& record) {
  Record again;
  KT::ReadRecord(KT::ParseJson(KT::RecordToJson(record).dump()), "the device", again);
  Require(again == record);
}

template <class Record>
std::size_t LongestString(const Record& record) {
  std::size_t longest = 0;
  KT::ForEachField(record, [&longest](const char*, const auto& value) {
    if constexpr (std::is_same_v<std::remove_cvref_t<decltype(value)>, std::string>) {
      longest = std::max(longest, value.size());
    }
  });
  return longest;
}

std::vector<std::string> Split(const std::string& text) {
  std::vector<std::string> parts{""};
  for (const char byte : text) {
    if (byte == kSeparator) {
      parts.emplace_back();
    } else {
      parts.back() += byte;
    }
  }
  return parts;
}

template <class Family>
void CheckRecordInput(const std::string& text) {
  std::vector<std::string> parts = Split(text);
  g_file = parts.front();
  parts.erase(parts.begin());
  const KT::DeviceSet<Family> command{
      .sumId = "s", .file = g_file.empty() ? "" : kFileName, .fields = std::move(parts), .force = false};
  const auto record = Taken([&] { return KT::ReadRecordInput(command); });
  if (!record.has_value()) return;
  CheckSurvives(*record);
  Require(KT::WhyNotSendable(*record).has_value() == (LongestString(*record) > KT::kMaxStringBytes));
  const auto whyNotReadable = KT::WhyNotReadable<Family>(*record, "fuzz");
  Require(!whyNotReadable.has_value() || IsOneLineOfText(*whyNotReadable));
}

void CheckImportFile(const std::string& text) {
  const auto file = Taken([&] { return std::make_unique<KT::ImportFile>(text); });
  if (!file.has_value()) return;
  BluetoothDeviceSummary paired;
  if ((*file)->PairDeviceParam(paired)) CheckSurvives(paired);
  std::vector<BluetoothDeviceSummary> trusted;
  if ((*file)->SonavoDevices(trusted)) {
    for (const BluetoothDeviceSummary& device : trusted) CheckSurvives(device);
  }
}

// A status comes from the host; whatever it holds, the terminal gets lines of text and nothing else.
void CheckStatus(const std::string& text) {
  const auto document = Taken([&] { return KT::ParseJson(text); });
  if (!document.has_value()) return;
  try {
    const KT::StatusReport report = KT::ReportStatus(*document);
    for (const std::string& warning : report.warnings) Require(IsOneLineOfText(warning));
    Require(platform::ipc::IsUtf8(report.text) && report.text.find('\x1b') == std::string::npos);
  } catch (const std::exception& refusal) {
    Require(IsOneLineOfText(refusal.what()));
  }
}

}  // namespace

// In place of the real ones, so that no input needs a file.
std::string platform::ReadWholeFile(const std::string& utf8Path, std::size_t) {
  Require(utf8Path == kFileName);
  return g_file;
}

std::string platform::ReadStandardInput(std::size_t) { return g_file; }

// Input: a letter for who reads it, then the text. For a device it is the file, then a separator and a field any number
// of times; an empty file stands for none.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzInput input(data, size);
  const char reader = input.Take<char>();
  const std::string text = input.TakeText(size);
  switch (reader) {
    case 't':
      CheckRecordInput<KT::TrustedFamily>(text);
      break;
    case 'c':
      CheckRecordInput<KT::CurrentFamily>(text);
      break;
    case 'i':
      CheckImportFile(text);
      break;
    case 's':
      CheckStatus(text);
      break;
    default:
      break;
  }
  return 0;
}
