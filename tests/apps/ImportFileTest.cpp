// The file of --import.
#include "apps/marnock-host/ImportFile.h"

#include <gtest/gtest.h>

#include "tests/apps/ExpectedError.h"
#include "tests/apps/TemporaryFile.h"

namespace {

using KT::ImportFile;
using support::ErrorOf;

std::string ErrorIn(const std::string& json) {
  return ErrorOf([&json] { ImportFile file(json); });
}

TEST(ImportFile, GivesTheDevicesInTheirOrder) {
  const ImportFile file(R"({"trusted": [{"devName": "a"}, {"summary": "s"}, {}], "paired": {"macAddrInt": 5}})");
  BluetoothDeviceSummary paired;
  EXPECT_TRUE(file.PairDeviceParam(paired));
  EXPECT_EQ(paired.macAddrInt, 5);
  EXPECT_EQ(paired.shareType, 1);
  std::vector<BluetoothDeviceSummary> devices(7);
  EXPECT_TRUE(file.SonavoDevices(devices));
  ASSERT_EQ(devices.size(), 3U);
  EXPECT_EQ(devices[0].devName, "a");
  EXPECT_EQ(devices[1].summary, "s");
  EXPECT_EQ(devices[2], BluetoothDeviceSummary{});
}

TEST(ImportFile, WithNullOrNothingHasNothingToGive) {
  for (const char* const json : {"{}", R"({"paired": null, "trusted": null})"}) {
    const ImportFile file(json);
    BluetoothDeviceSummary device;
    device.devName = "untouched";
    EXPECT_FALSE(file.PairDeviceParam(device));
    EXPECT_EQ(device.devName, "untouched");
    std::vector<BluetoothDeviceSummary> devices(1);
    EXPECT_FALSE(file.SonavoDevices(devices));
    EXPECT_EQ(devices.size(), 1U);
  }
}

TEST(ImportFile, WithAnEmptyListHasAnEmptyListToGive) {
  const ImportFile file(R"({"trusted": []})");
  std::vector<BluetoothDeviceSummary> devices(1);
  EXPECT_TRUE(file.SonavoDevices(devices));
  EXPECT_TRUE(devices.empty());
}

TEST(ImportFile, NamesThePlaceOfWhatIsWrong) {
  EXPECT_EQ(ErrorIn("[]"), "expected an object with \"paired\" and \"trusted\"");
  EXPECT_EQ(ErrorIn("null"), "expected an object with \"paired\" and \"trusted\"");
  EXPECT_EQ(ErrorIn(R"({"Paired": {}})"), "unknown member \"Paired\"; \"paired\" and \"trusted\" are known");
  EXPECT_EQ(ErrorIn(R"({"trusted": {}})"), "trusted: expected an array of devices or null");
  EXPECT_EQ(ErrorIn(R"({"trusted": "x"})"), "trusted: expected an array of devices or null");
  EXPECT_EQ(ErrorIn(R"({"paired": []})"), "paired: expected an object with the fields of a device");
  EXPECT_EQ(ErrorIn(R"({"trusted": [{}, null]})"), "trusted[1]: expected an object with the fields of a device");
  EXPECT_EQ(ErrorIn(R"({"trusted": [{}, {}, {"isPaired": 0}]})"),
            "trusted[2].isPaired: expected true or false, found 0");
  EXPECT_EQ(ErrorIn(R"({"paired": {"isConnected": 1}})"), "paired: unknown field \"isConnected\"");
  EXPECT_EQ(ErrorIn(R"({"paired": null, "paired": null})"), "the member \"paired\" stands twice in one object");
}

TEST(ImportFile, NamesLineAndColumnOfWhatIsNotJson) {
  const std::string error = ErrorIn("{\"paired\":\n?}");
  EXPECT_EQ(error.find("not JSON: "), 0U) << error;
  EXPECT_NE(error.find("line 2, column 1"), std::string::npos) << error;
}

TEST(ImportFileRead, ReadsAFileOfAnyName) {
  const support::TemporaryFile json(R"({"paired": {"devName": "read"}})");
  BluetoothDeviceSummary device;
  EXPECT_TRUE(ImportFile::Read(json.Path())->PairDeviceParam(device));
  EXPECT_EQ(device.devName, "read");
}

TEST(ImportFileRead, NamesTheFile) {
  const support::TemporaryFile json("[]");
  EXPECT_EQ(ErrorOf([&] { ImportFile::Read(json.Path()); }),
            json.Path() + ": expected an object with \"paired\" and \"trusted\"");
  EXPECT_EQ(ErrorOf([&] { ImportFile::Read(json.Path() + "-absent"); }),
            "cannot read " + json.Path() + "-absent: No such file or directory");
}

}  // namespace
