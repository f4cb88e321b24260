#include "platform/configuration/CohesaConfig.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

// The library only passes the record on: any type of this name will do here.
struct BluetoothDeviceSummary {
  std::string sumId;
};

namespace {

// Answers with what it was given.
class ListSource final : public CohesaConfigSource {
 public:
  ListSource(std::vector<BluetoothDeviceSummary> devices, bool answer)
      : devices_(std::move(devices)), answer_(answer) {}

  bool PairDeviceParam(BluetoothDeviceSummary& device) const override {
    if (answer_) device = devices_.front();
    return answer_;
  }

  bool SonavoDevices(std::vector<BluetoothDeviceSummary>& devices) const override {
    if (answer_) devices = devices_;
    return answer_;
  }

 private:
  std::vector<BluetoothDeviceSummary> devices_;
  bool answer_;
};

class CohesaConfigAnswers : public testing::Test {
 protected:
  ~CohesaConfigAnswers() override { CohesaConfig::SetSource(nullptr); }

  BluetoothDeviceSummary device_{"untouched"};
  std::vector<BluetoothDeviceSummary> devices_{{"untouched"}};
};

TEST_F(CohesaConfigAnswers, AreFalseWithoutASource) {
  EXPECT_FALSE(CohesaConfig::GetPairDeviceParam(device_));
  EXPECT_FALSE(CohesaConfig::GetSonavoDevice(devices_));
  EXPECT_EQ(device_.sumId, "untouched");
  ASSERT_EQ(devices_.size(), 1U);
  EXPECT_EQ(devices_[0].sumId, "untouched");
}

TEST_F(CohesaConfigAnswers, AreFalseWhenTheSourceHasNone) {
  CohesaConfig::SetSource(std::make_unique<ListSource>(std::vector<BluetoothDeviceSummary>{{"a"}}, false));
  EXPECT_FALSE(CohesaConfig::GetPairDeviceParam(device_));
  EXPECT_FALSE(CohesaConfig::GetSonavoDevice(devices_));
  EXPECT_EQ(device_.sumId, "untouched");
  EXPECT_EQ(devices_.size(), 1U);
}

TEST_F(CohesaConfigAnswers, AreTheSourcesInItsOrder) {
  CohesaConfig::SetSource(std::make_unique<ListSource>(std::vector<BluetoothDeviceSummary>{{"b"}, {"a"}}, true));
  EXPECT_TRUE(CohesaConfig::GetPairDeviceParam(device_));
  EXPECT_EQ(device_.sumId, "b");
  EXPECT_TRUE(CohesaConfig::GetSonavoDevice(devices_));
  ASSERT_EQ(devices_.size(), 2U);
  EXPECT_EQ(devices_[0].sumId, "b");
  EXPECT_EQ(devices_[1].sumId, "a");
}

TEST_F(CohesaConfigAnswers, AreFalseAgainOnceTheSourceIsGone) {
  CohesaConfig::SetSource(std::make_unique<ListSource>(std::vector<BluetoothDeviceSummary>{{"a"}}, true));
  CohesaConfig::SetSource(nullptr);
  EXPECT_FALSE(CohesaConfig::GetPairDeviceParam(device_));
}

}  // namespace
