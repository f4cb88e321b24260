// The tables of docs/messages.md are those of the code.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <sstream>
#include <type_traits>

#include "codec/DeviceFieldVisitors.h"
#include "codec/messages/CurrZentapMessages.h"
#include "codec/messages/EncodedSize.h"
#include "codec/messages/PeerSumMessages.h"
#include "codec/messages/TrustedZentapMessages.h"

namespace codec_tests {
namespace {

std::string Page() {
  std::ifstream file(MARNOCK_DOCS_FOLDER "/messages.md", std::ios::binary);
  EXPECT_TRUE(file.is_open());
  std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  std::erase(text, '\r');
  return text;
}

void ExpectOnPage(const std::string& table) {
  EXPECT_NE(Page().find("\n\n" + table + "\n"), std::string::npos) << "docs/messages.md has to hold this table:\n\n"
                                                                   << table;
}

template <class Value>
const char* StreamForm() {
  if (std::is_same_v<Value, std::string>) return "string";
  if (std::is_same_v<Value, std::int64_t>) return "int64";
  if (std::is_same_v<Value, std::uint32_t>) return "uint32";
  return std::is_same_v<Value, bool> ? "bool" : "int32";
}

std::string Shown(const std::string& text) { return text.empty() ? "empty" : text; }
std::string Shown(bool value) { return value ? "true" : "false"; }
template <class Integer>
std::string Shown(Integer value) {
  return std::to_string(value);
}

std::string FieldTable() {
  std::ostringstream table;
  table << "| # | field | type | default | full | read-back | trusted |\n|---|---|---|---|---|---|---|\n";
  const CurrZentapDeviceInfo fresh;
  int number = 0;
  const auto row = [&]<class Field>(const Field& field) {
    const auto mark = [&](KT::Profile profile) { return field.In(profile) ? "yes" : "-"; };
    table << "| " << ++number << " | `" << field.name << "` | " << StreamForm<typename Field::Value>() << " | "
          << Shown(fresh.*field.member) << " | " << mark(KT::Profile::Full) << " | "
          << mark(KT::Profile::CurrentReadBack) << " | " << mark(KT::Profile::Trusted) << " |\n";
  };
  std::apply([&](const auto&... field) { (row(field), ...); }, KT::kCurrentFields);
  return table.str();
}

// Puts a message's list of fields into words.
class PayloadText {
 public:
  template <class Value>
  void operator()(const char* name, const Value&) {
    Add("`" + std::string(name) + "`");
  }
  template <class Record, KT::Profile profile>
  void operator()(const char*, const Record&, KT::RecordAs<profile>) {
    Add("record (" + ProfileName(profile) + ")");
  }
  template <class Record, KT::Profile profile>
  void operator()(const char* countName, const char*, const std::int32_t&, const std::vector<Record>&,
                  KT::RecordAs<profile>) {
    Add("`" + std::string(countName) + "`, so many records (" + ProfileName(profile) + ")");
  }

  const std::string& Text() const { return text_; }

 private:
  static std::string ProfileName(KT::Profile profile) {
    if (profile == KT::Profile::Full) return "full";
    return profile == KT::Profile::Trusted ? "trusted" : "read-back";
  }
  void Add(const std::string& part) { text_ += (text_.empty() ? "" : ", ") + part; }

  std::string text_;
};

template <class Message>
std::string PayloadOf() {
  const Message message;
  PayloadText text;
  Message::Fields(message, text);
  return text.Text();
}

template <class Request>
void AddExchange(std::ostream& table, const char* meaning) {
  table << "| 0x" << std::hex << Request::kCode << " | " << meaning << " | " << PayloadOf<Request>() << " | "
        << PayloadOf<typename Request::Response>() << " |\n";
}

std::string MessageTable() {
  std::ostringstream table;
  table << "| code | request | its payload | payload of the response |\n|---|---|---|---|\n";
  AddExchange<KT::TrustedZentapDeviceSetRequest>(table, "set a trusted device");
  AddExchange<KT::TrustedZentapDeviceGetRequest>(table, "get a trusted device");
  AddExchange<KT::TrustedZentapDeviceGetListRequest>(table, "get all trusted devices");
  AddExchange<KT::TrustedZentapDeviceDeleteRequest>(table, "delete a trusted device");
  AddExchange<KT::CurrZentapDeviceSetRequest>(table, "set a current device");
  AddExchange<KT::CurrZentapDeviceGetRequest>(table, "get a current device");
  AddExchange<KT::CurrZentapDeviceGetListRequest>(table, "get all current devices");
  AddExchange<KT::CurrZentapDeviceDeleteRequest>(table, "delete a current device");
  AddExchange<KT::PeerSumSetRequest>(table, "set a peer");
  AddExchange<KT::PeerSumGetRequest>(table, "get a peer");
  AddExchange<KT::PeerSumDeleteRequest>(table, "delete a peer");
  return table.str();
}

template <KT::Profile profile>
void AddProfile(std::ostream& table, const char* name, const char* record, const char* use) {
  table << "| " << name << " | `" << record << "` | " << KT::kProfileFieldCount<profile> << " | "
        << KT::kSmallestRecordBytes<profile> << " | " << use << " |\n";
}

std::string ProfileTable() {
  std::ostringstream table;
  table << "| profile | record | fields | bytes without text | used for |\n|---|---|---|---|---|\n";
  AddProfile<KT::Profile::Full>(table, "full", "CurrZentapDeviceInfo", "the request to set a current device");
  AddProfile<KT::Profile::CurrentReadBack>(table, "read-back", "CurrZentapDeviceInfo",
                                           "current devices in answers, single or in a list");
  AddProfile<KT::Profile::Trusted>(table, "trusted", "BluetoothDeviceSummary", "trusted devices in every message");
  return table.str();
}

TEST(MessageReference, HasTheFieldsOfTheRecords) { ExpectOnPage(FieldTable()); }
TEST(MessageReference, HasTheProfiles) { ExpectOnPage(ProfileTable()); }
TEST(MessageReference, HasThePayloadOfEveryMessage) { ExpectOnPage(MessageTable()); }

}  // namespace
}  // namespace codec_tests
