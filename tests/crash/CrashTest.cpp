// Every way in which a save, or the repair after one, can be cut short: by a kill, which leaves what was done so far,
// and by a power cut, which may take back whatever was not synced.
#include <gtest/gtest.h>

#include <iostream>
#include <optional>
#include <unordered_set>

#include "tests/crash/Choices.h"
#include "tests/crash/Effort.h"
#include "tests/crash/PowerCut.h"
#include "tests/crash/Survival.h"

namespace {

using crash::Device;
using crash::NameRule;
using crash::PowerCut;
using crash::Recorder;
using crash::Recording;
using crash::Survivor;
using support::DiskEvent;
using support::DiskImage;

struct Scenario {
  const char* name;
  Recording (*record)();
};

void AddRows(KT::TrustedZentapDbEngine& engine, const std::string& name, int rows, std::size_t bytes) {
  for (int row = 0; row < rows; ++row) {
    const std::string key = name + std::to_string(row);
    engine.UpdateZentapDeviceInfo(key, Device(key, bytes));
  }
}

// A disk on which the service has saved some rows.
DiskImage SavedDisk(int rows, std::size_t bytes) {
  Recorder recorder({});
  EXPECT_TRUE(recorder.Change([&](auto& engine) { AddRows(engine, "old", rows, bytes); }));
  return recorder.Disk().Image();
}

// The same, beside a copy that is older still and that nobody could delete.
DiskImage DiskWithStaleCopy() {
  Recorder recorder(SavedDisk(6, 700));
  DiskImage image = recorder.Disk().Image();
  EXPECT_EQ(image.size(), 1U);
  const auto [name, stale] = *image.begin();
  EXPECT_TRUE(recorder.Change([&](auto& engine) { AddRows(engine, "newer", 4, 900); }));
  image = recorder.Disk().Image();
  image[name + ".tmp"] = stale;
  return image;
}

Recording FirstSave() {
  Recorder recorder({});
  EXPECT_TRUE(recorder.Change([](auto& engine) { AddRows(engine, "new", 12, 1500); }));
  return recorder.Take();
}

Recording NormalSaves() {
  Recorder recorder(SavedDisk(20, 1700));
  EXPECT_TRUE(recorder.Change([](auto& engine) { AddRows(engine, "old", 2, 1200); }));
  EXPECT_TRUE(recorder.Change([](auto& engine) { engine.DeleteZentapDeviceInfo("old0"); }));
  EXPECT_TRUE(recorder.Change([](auto& engine) { AddRows(engine, "new", 1, 100); }));
  return recorder.Take();
}

// Texts that are too long for one page.
Recording SavesOfLongTexts() {
  Recorder recorder(SavedDisk(3, 9500));
  EXPECT_TRUE(recorder.Change([](auto& engine) { AddRows(engine, "new", 1, 9500); }));
  EXPECT_TRUE(recorder.Change([](auto& engine) { AddRows(engine, "old", 1, 5000); }));
  return recorder.Take();
}

Recording SaveInPlace() {
  Recorder recorder(DiskWithStaleCopy());
  EXPECT_TRUE(recorder.Change([](auto& engine) { AddRows(engine, "new", 3, 1300); }));
  EXPECT_TRUE(recorder.Change([](auto& engine) { AddRows(engine, "new", 1, 100); }));
  return recorder.Take();
}

Recording SaveAfterAFailedOne() {
  Recorder recorder(SavedDisk(15, 1700));
  const std::size_t used = recorder.Disk().Image().begin()->second.size();
  recorder.Disk().LimitRoom(used + 4 * 4096);
  EXPECT_FALSE(recorder.Change([](auto& engine) { AddRows(engine, "unsaved", 1, 100); }));
  recorder.Disk().LimitRoom(1'000'000);
  EXPECT_TRUE(recorder.Change([](auto& engine) { AddRows(engine, "new", 1, 100); }));
  return recorder.Take();
}

constexpr Scenario kScenarios[] = {
    {"first save", FirstSave},
    {"normal saves", NormalSaves},
    {"saves of long texts", SavesOfLongTexts},
    {"saves in place over a stale copy", SaveInPlace},
    {"save after a failed one", SaveAfterAFailedOne},
};

std::string Listing(const DiskImage& image) {
  std::string text;
  for (const auto& [name, bytes] : image) {
    text += "\n  " + name + ": " + std::to_string(bytes.size()) + " bytes";
  }
  return text;
}

std::size_t Print(const DiskImage& image, std::size_t events) {
  std::size_t print = events;
  for (const auto& [name, bytes] : image) {
    print = print * 31 + std::hash<std::string>()(name);
    print = print * 31 + std::hash<std::string>()(bytes);
  }
  return print;
}

struct Figures {
  std::size_t kills = 0;
  std::size_t powerCuts = 0;
  std::size_t repairCuts = 0;
  std::size_t lost = 0;
  std::size_t falseAlarms = 0;
};

class Crashes : public testing::TestWithParam<std::tuple<Scenario, NameRule>> {
 protected:
  // Looks at one state that the recording's disk may be left in at that event. Nothing when it was looked at before.
  std::optional<Survivor> Check(const DiskImage& image, std::size_t events) {
    if (!seen_.insert(Print(image, events)).second) {
      return std::nullopt;
    }
    Survivor survivor = crash::StartOn(image);
    const bool isRight =
        !survivor.refusal.has_value() && recording_.IsAcceptable(survivor.rows, events) && survivor.isNextSaveRight;
    figures_.lost += isRight ? 0U : 1U;
    figures_.falseAlarms += survivor.isLossReported ? 1U : 0U;
    if (!isRight && figures_.lost < 5) {
      ADD_FAILURE() << "lost at event " << events << ": " << survivor.refusal.value_or("") << survivor.rows.size()
                    << " rows, next save right: " << survivor.isNextSaveRight << Listing(image);
    }
    return survivor;
  }

  // The repair of that state, cut short in its turn.
  void CheckRepair(const std::vector<DiskEvent>& repair, const DiskImage& image, std::size_t events) {
    for (std::size_t count = 0; count <= repair.size(); ++count) {
      const PowerCut cut(image, repair, count, Rule());
      crash::ForEachChoice(cut, effort_.ofRepair, random_, [&](const PowerCut::Choice& choice) {
        figures_.repairCuts += Check(cut.Image(choice), events).has_value() ? 1U : 0U;
      });
    }
  }

  void CheckPowerCut(std::size_t events) {
    const PowerCut cut(recording_.start, recording_.events, events, Rule());
    crash::ForEachChoice(cut, effort_.ofSave, random_, [&](const PowerCut::Choice& choice) {
      const DiskImage image = cut.Image(choice);
      if (const auto survivor = Check(image, events); survivor.has_value()) {
        ++figures_.powerCuts;
        if (++states_ % effort_.statesByRepair == 0) {
          CheckRepair(survivor->repairEvents, image, events);
        }
      }
    });
  }

  NameRule Rule() const { return std::get<NameRule>(GetParam()); }

  const Recording recording_ = std::get<Scenario>(GetParam()).record();
  const crash::EffortOfAll effort_ = crash::ChosenEffort();
  std::mt19937 random_{20261121};  // always the same
  std::unordered_set<std::size_t> seen_;
  std::size_t states_ = 0;
  Figures figures_;
};

}  // namespace

TEST_P(Crashes, LoseNothingThatWasSaved) {
  for (std::size_t events = 0; events <= recording_.events.size(); ++events) {
    const PowerCut nothingLost(recording_.start, recording_.events, events, Rule());
    const PowerCut::Choice everything(nothingLost.Undecided(), true);
    figures_.kills += Check(nothingLost.Image(everything), events).has_value() ? 1U : 0U;
    CheckPowerCut(events);
  }
  std::cout << "crashes: " << std::get<Scenario>(GetParam()).name << ": " << recording_.events.size() << " events, "
            << figures_.kills << " states after a kill, " << figures_.powerCuts << " after a power cut, "
            << figures_.repairCuts << " after a cut in the repair; " << figures_.lost << " lost, "
            << figures_.falseAlarms << " reported as lost\n";
  EXPECT_EQ(figures_.lost, 0U);
  EXPECT_EQ(figures_.falseAlarms, 0U);
}

INSTANTIATE_TEST_SUITE_P(EachSave, Crashes,
                         testing::Combine(testing::ValuesIn(kScenarios),
                                          testing::Values(NameRule::WithFolder, NameRule::WithAnyFile)));
