// The start-up import.
#include <gtest/gtest.h>

#include <optional>

#include "codec/messages/CurrZentapMessages.h"
#include "codec/messages/TrustedZentapMessages.h"
#include "platform/configuration/CohesaConfig.h"
#include "service/StartupImport.h"
#include "tests/service/ServiceFixture.h"

namespace {

using Lines = std::vector<std::string>;

struct Configuration {
  std::optional<BluetoothDeviceSummary> paired;
  std::optional<std::vector<BluetoothDeviceSummary>> trusted;
  int calls = 0;
};

class ScriptedSource final : public CohesaConfigSource {
 public:
  explicit ScriptedSource(Configuration& configuration) : configuration_(configuration) {}

  bool PairDeviceParam(BluetoothDeviceSummary& device) const override {
    ++configuration_.calls;
    device = configuration_.paired.value_or(BluetoothDeviceSummary());
    return configuration_.paired.has_value();
  }
  bool SonavoDevices(std::vector<BluetoothDeviceSummary>& devices) const override {
    ++configuration_.calls;
    devices = configuration_.trusted.value_or(std::vector<BluetoothDeviceSummary>());
    return configuration_.trusted.has_value();
  }

 private:
  Configuration& configuration_;
};

class Import : public support::ServiceFixture {
 protected:
  Import() { CohesaConfig::SetSource(std::make_unique<ScriptedSource>(configuration)); }
  ~Import() override { CohesaConfig::SetSource(nullptr); }

  static BluetoothDeviceSummary Device(const std::string& summary) {
    BluetoothDeviceSummary device;
    device.summary = summary;
    return device;
  }

  std::vector<std::string> TrustedSummaries() {
    std::vector<std::string> summaries;
    for (const auto& device : Ask(KT::TrustedZentapDeviceGetListRequest()).list) {
      summaries.push_back(device.summary);
    }
    return summaries;
  }

  std::vector<std::string> CurrentSummaries() {
    std::vector<std::string> summaries;
    for (const auto& device : Ask(KT::CurrZentapDeviceGetListRequest()).list) {
      summaries.push_back(device.summary);
    }
    return summaries;
  }

  Configuration configuration;
};

const char* const kStarted = "3 [KTData] Get zentap devices from registry.(KT::Marnock::GetDeviceFromRegistry)";
const char* const kNoCurrent = "4 [KTData] Get current zentap devices failed.(KT::Marnock::GetCurrDevice)";
const char* const kNoTrusted = "4 [KTData] Get trusted zentap devices failed.(KT::Marnock::GetTrustedDevice)";

TEST_F(Import, TheGuardFileStopsItBeforeTheLibraryIsAsked) {
  profile.MakeDatabaseFolder();
  support::WriteBytes(profile.NativeFile("G12NJ9DS39D.db"), "");
  KT::ImportDevicesAtStartup(*service);
  EXPECT_EQ(log.Take(),
            (Lines{kStarted, "3 [KTData] Zentap device database is exist.(KT::Marnock::GetDeviceFromRegistry)"}));
  EXPECT_EQ(configuration.calls, 0);
}

TEST_F(Import, TheEnginesOwnFilesDoNotStopIt) {
  Stop();  // saves all three
  ipc = support::IpcRecord();
  Start();
  KT::ImportDevicesAtStartup(*service);
  EXPECT_EQ(configuration.calls, 2);
}

TEST_F(Import, ADirectoryOfTheGuardsNameDoesNotStopIt) {
  std::filesystem::create_directories(profile.NativeFile("G12NJ9DS39D.db"));
  KT::ImportDevicesAtStartup(*service);
  EXPECT_EQ(configuration.calls, 2);
}

TEST_F(Import, LogsWhatTheLibraryDoesNotHaveAndGoesOn) {
  KT::ImportDevicesAtStartup(*service);
  EXPECT_EQ(log.Take(), (Lines{kStarted, kNoCurrent, kNoTrusted}));
  EXPECT_TRUE(TrustedSummaries().empty());
}

TEST_F(Import, AFailureOfThePairedDeviceDoesNotStopTheTrustedOnes) {
  configuration.trusted = std::vector{Device("a"), Device("b"), Device("c")};
  KT::ImportDevicesAtStartup(*service);
  EXPECT_EQ(TrustedSummaries(), (std::vector<std::string>{"a", "b", "c"}));
  EXPECT_TRUE(CurrentSummaries().empty());
}

TEST_F(Import, ThePairedDeviceBecomesACurrentOneWithItsOtherFieldsAtTheirDefaults) {
  configuration.paired = Device("phone");
  configuration.paired->macAddrInt = 77;
  KT::ImportDevicesAtStartup(*service);
  const auto list = Ask(KT::CurrZentapDeviceGetListRequest()).list;
  ASSERT_EQ(list.size(), 1U);
  CurrZentapDeviceInfo expected;
  expected.summary = "phone";
  expected.macAddrInt = 77;
  EXPECT_TRUE(list[0] == expected);
}

TEST_F(Import, ImportedRowsAreFoundUnderTheKeyColumnsName) {
  configuration.trusted = std::vector{Device("a")};
  KT::ImportDevicesAtStartup(*service);
  KT::TrustedZentapDeviceGetRequest get;
  get.sumId = "sumId";
  EXPECT_EQ(Ask(get).info.summary, "a");
  get.sumId = "a";
  EXPECT_EQ(Ask(get).info.summary, "");
}

TEST_F(Import, ASecondRunAddsTheRowsAgain) {
  configuration.trusted = std::vector{Device("a")};
  KT::ImportDevicesAtStartup(*service);
  KT::ImportDevicesAtStartup(*service);
  EXPECT_EQ(TrustedSummaries(), (std::vector<std::string>{"a", "a"}));
}

TEST_F(Import, AnEmptyTrustedListIsStillSaved) {
  configuration.trusted.emplace();
  KT::ImportDevicesAtStartup(*service);
  EXPECT_EQ(log.Take(),
            (Lines{kStarted, kNoCurrent,
                   "3 [KTData] Save zentap database into disk.(KT::TrustedZentapDbEngine::SaveZentapDbIntoDisk)",
                   "3 [KTData] Save database success.(KT::DbEngine::SaveDbIntoDisk)"}));
}

TEST_F(Import, StoreFailuresAreLoggedUnderTheStoresName) {
  Stop();
  profile.MakeDatabaseFolder();
  support::WriteBytes(profile.NativeFile("CurrentZentapDeviceInfo1G12NJ9DS39D.db"), "");
  support::WriteBytes(profile.NativeFile("TrustedZentapDeviceInfo2G12NJ9DS39D.db"), "");
  Start();
  configuration.paired = Device("phone");
  configuration.trusted = std::vector{Device("a")};
  KT::ImportDevicesAtStartup(*service);
  const Lines lines = log.Take();
  const auto logged = [&lines](const char* line) { return std::find(lines.begin(), lines.end(), line) != lines.end(); };
  EXPECT_TRUE(logged(
      "4 [KTData] Set curr zentap device list info failed.(KT::DevicePersistence::SetCurrZentapDeviceInfoList)"));
  EXPECT_TRUE(
      logged("4 [KTData] Set zentap device list info failed.(KT::DevicePersistence::SetTrustedZentapDeviceInfoList)"));
}

}  // namespace
