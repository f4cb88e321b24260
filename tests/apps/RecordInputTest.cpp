// The record of a set command and what is wrong with it.
#include "apps/marnockctl/RecordInput.h"

#include <gtest/gtest.h>

#include "tests/apps/ExpectedError.h"
#include "tests/apps/TemporaryFile.h"

namespace {

using KT::CurrentFamily;
using KT::TrustedFamily;
using support::ErrorOf;
using support::TemporaryFile;

KT::DeviceSet<TrustedFamily> SetFrom(const std::string& file, std::vector<std::string> fields = {}) {
  KT::DeviceSet<TrustedFamily> command;
  command.file = file;
  command.fields = std::move(fields);
  return command;
}

TEST(RecordInput, PutsFieldsOnTopOfTheFile) {
  const TemporaryFile file(R"({"devName": "from the file", "nickName": "kept"})");
  const auto record = KT::ReadRecordInput(SetFrom(file.Path(), {"devName=first", "devName=last=one", "macAddr="}));
  EXPECT_EQ(record.devName, "last=one");
  EXPECT_EQ(record.nickName, "kept");
  EXPECT_EQ(record.shareType, 1);
}

TEST(RecordInput, NeedsAFileOrAField) {
  EXPECT_EQ(ErrorOf([] { KT::ReadRecordInput(SetFrom("")); }),
            "no device given: name a FILE, - for standard input, or fields with --field NAME=VALUE");
}

TEST(RecordInput, NamesTheFileAndThePlaceInIt) {
  const TemporaryFile file(R"({"devType": "one"})");
  EXPECT_EQ(ErrorOf([&] { KT::ReadRecordInput(SetFrom(file.Path())); }),
            file.Path() + ": the device.devType: expected an integer from -2147483648 to 2147483647, found \"one\"");
  const TemporaryFile list("[]");
  EXPECT_EQ(ErrorOf([&] { KT::ReadRecordInput(SetFrom(list.Path())); }),
            list.Path() + ": the device: expected an object with the fields of a device");
  EXPECT_EQ(ErrorOf([&] { KT::ReadRecordInput(SetFrom(list.Path() + "-absent")); }),
            list.Path() + "-absent: cannot read " + list.Path() + "-absent: No such file or directory");
}

TEST(RecordInput, RefusesANumberThatNoParserTakes) {
  const TemporaryFile file(R"({"devType": 1e999})");
  EXPECT_EQ(ErrorOf([&] { KT::ReadRecordInput(SetFrom(file.Path())); }).find(file.Path() + ": not JSON: "), 0U);
}

TEST(RecordInput, NamesAFieldThatIsWrong) {
  EXPECT_EQ(ErrorOf([] { KT::ReadRecordInput(SetFrom("", {"devName"})); }), "--field devName: expected NAME=VALUE");
  EXPECT_EQ(ErrorOf([] { KT::ReadRecordInput(SetFrom("", {"a\x1b"})); }), "--field a\\x1b: expected NAME=VALUE");
  EXPECT_EQ(ErrorOf([] { KT::ReadRecordInput(SetFrom("", {"name=x"})); }), "unknown field \"name\"");
  EXPECT_EQ(ErrorOf([] { KT::ReadRecordInput(SetFrom("", {"isConnected=1"})); }), "unknown field \"isConnected\"");
}

TEST(RecordInput, TakesAFileOfAMebibyteAndNotOneByteMore) {
  const std::string start = R"({"devName": "a")";
  const std::size_t limit = 1024 * 1024;
  const TemporaryFile full(start + std::string(limit - start.size() - 1, ' ') + "}");
  EXPECT_EQ(KT::ReadRecordInput(SetFrom(full.Path())).devName, "a");
  const TemporaryFile over(start + std::string(limit - start.size(), ' ') + "}");
  EXPECT_EQ(ErrorOf([&] { KT::ReadRecordInput(SetFrom(over.Path())); }),
            over.Path() + ": cannot read " + over.Path() + ": it holds more than 1048576 bytes");
}

TEST(WhyNotSendable, IsAStringOf32768Bytes) {
  BluetoothDeviceSummary record;
  record.nickName.assign(32'767, 'n');
  EXPECT_EQ(KT::WhyNotSendable(record), std::nullopt);
  record.nickName += 'n';
  EXPECT_EQ(KT::WhyNotSendable(record), "nickName has 32768 bytes; the longest string that can be sent has 32767");
}

TEST(WhyNotReadable, IsAnAnswerOf1025Bytes) {
  // Package name, result, 24 fields: 14 of 4 bytes, 1 of 8, 9 lengths of 2.
  constexpr std::size_t kRest = 2 + 3 + 4 + 14 * 4 + 8 + 9 * 2;
  BluetoothDeviceSummary record;
  record.devName.assign(1024 - kRest, 'n');
  EXPECT_EQ(KT::WhyNotReadable<TrustedFamily>(record, "pkg"), std::nullopt);
  record.devName += 'n';
  EXPECT_EQ(KT::WhyNotReadable<TrustedFamily>(record, "pkg"),
            "the answer to a get would take 1025 bytes; the service's reply holds 1024");
}

TEST(WhyNotReadable, CountsOnlyWhatTheTableKeeps) {
  // 31 fields: 13 + 7 of 4 bytes, 1 of 8, 10 lengths of 2; deviceId is not stored.
  constexpr std::size_t kRest = 2 + 3 + 4 + 20 * 4 + 8 + 10 * 2;
  CurrZentapDeviceInfo record;
  record.deviceId.assign(5'000, 'd');
  record.devName.assign(1024 - kRest, 'n');
  EXPECT_EQ(KT::WhyNotReadable<CurrentFamily>(record, "pkg"), std::nullopt);
  record.devName += 'n';
  EXPECT_EQ(KT::WhyNotReadable<CurrentFamily>(record, "pkg"),
            "the answer to a get would take 1025 bytes; the service's reply holds 1024");
}

TEST(WhyNotReadable, IsARecordOfDefaults) {
  const std::string why = "the device holds only default values: a get could not tell it from one that is not there";
  EXPECT_EQ(KT::WhyNotReadable<TrustedFamily>({}, "pkg"), why);
  CurrZentapDeviceInfo record;
  record.extraInt1 = 5;
  record.deviceId = "not stored";
  record.isSupportPlenix = true;
  EXPECT_EQ(KT::WhyNotReadable<CurrentFamily>(record, "pkg"), why);
  record.isConnected = 1;
  EXPECT_EQ(KT::WhyNotReadable<CurrentFamily>(record, "pkg"), std::nullopt);
}

}  // namespace
