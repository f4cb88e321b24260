// Services that start and that stop while anything fails.
#include <algorithm>
#include <array>
#include <map>
#include <new>
#include <optional>

#include "tests/faults/RequestCases.h"
#include "tests/faults/RestartedHost.h"
#include "tests/faults/Sweep.h"
#include "tests/service/ServiceFixture.h"

namespace {

using faults::FaultKind;
using faults::Outcome;
using faults::Purpose;
using faults::RequestCase;
using faults::Round;
using support::FaultSpan;

const RequestCase& SetOf(int table) {
  constexpr std::array kSetCodes{0xc40009, 0xc40001, 0xc40005};  // peers, trusted and current devices
  return faults::RequestCaseOf(kSetCodes.at(static_cast<std::size_t>(table)));
}
constexpr int kTables = 3;

class LifecycleSweep : public support::ServiceFixture {
 protected:
  LifecycleSweep() {
    Stop();
    injector_.emplace(system);
  }
  ~LifecycleSweep() override {
    Stop();
    injector_.reset();
  }

  // Sets the row of each table. Answered with 0, saved or not.
  void SetAll(const std::string& value) {
    for (int table = 0; table < kTables; ++table) {
      ipc.posted.clear();
      Deliver(SetOf(table).code, SetOf(table).payload(value));
      ASSERT_EQ(ipc.posted.size(), 1U);
      EXPECT_EQ(SetOf(table).result(ipc.posted[0].payload), 0);
    }
  }

  // The newest value of each table's row on the disk.
  std::array<std::string, kTables> OnDisk() {
    std::array<std::string, kTables> values;
    for (int table = 0; table < kTables; ++table) {
      const auto rows = restarted_.Rows(profile, SetOf(table).file, SetOf(table).rows);
      values.at(static_cast<std::size_t>(table)) = rows.empty() ? "" : rows.back();
    }
    return values;
  }

  // Ends the service and brings the folder to where each table's file holds "old" and nothing lies beside it.
  void PutOldFiles() {
    Stop();
    if (oldFiles_.empty()) {
      Start();
      SetAll("old");
      Stop();
      for (int table = 0; table < kTables; ++table) {
        oldFiles_[SetOf(table).file] = support::ReadBytes(profile.NativeFile(SetOf(table).file));
      }
    }
    for (const auto& entry : std::filesystem::directory_iterator(profile.NativeFile(""))) {
      std::filesystem::remove(entry.path());
    }
    for (const auto& [name, bytes] : oldFiles_) {
      support::WriteBytes(profile.NativeFile(name), bytes);
    }
  }

  // A service that holds "new" in each table and could not save it.
  void StartWithUnsavedChanges(const FaultKind& fault) {
    PutOldFiles();
    Start();
    injector_->Arm(fault, 1, FaultSpan::FromThenOn);
    SetAll("new");
    injector_->Heal();
  }

  bool HasOldFiles() const {
    return std::all_of(oldFiles_.begin(), oldFiles_.end(), [this](const auto& file) {
      return support::ReadBytes(profile.NativeFile(file.first)) == file.second;
    });
  }

  // Whether the row of each table can be read.
  bool AnswersWith(const std::string& value) {
    bool isRight = true;
    for (int table = 0; table < kTables; ++table) {
      const RequestCase& get = faults::RequestCaseOf(SetOf(table).getCode);
      std::string payload = get.payload("");
      TagIPCMessageItem item;
      item.code = get.code;
      item.length = static_cast<int>(payload.size());
      item.payload = payload.data();
      ipc.posted.clear();
      isRight =
          support::Deliver(item) && ipc.posted.size() == 1 && get.value(ipc.posted[0].payload) == value && isRight;
    }
    return isRight;
  }

  std::optional<faults::FaultInjector> injector_;
  faults::RestartedHost restarted_;

 private:
  std::map<std::string, std::string> oldFiles_;  // bytes by name
};

const FaultKind& DiskFull() {
  static const std::vector<FaultKind> kinds = faults::FileFaultKinds();
  return *std::find_if(kinds.begin(), kinds.end(),
                       [](const FaultKind& kind) { return std::string(kind.name) == "disk full"; });
}

TEST_F(LifecycleSweep, WhatCouldNotBeSavedIsSavedAtTheEndWhateverFailedBefore) {
  for (const FaultKind& kind : faults::FileFaultKinds()) {
    SCOPED_TRACE(kind.name);
    StartWithUnsavedChanges(kind);
    Stop();
    EXPECT_EQ(OnDisk(), (std::array<std::string, kTables>{"new", "new", "new"}));
  }
}

// Each of the three saves at the end is on its own: what fails costs the tables that it meets, and loses none of what
// was on the disk before.
TEST_F(LifecycleSweep, AnOrderlyStopSavesWhatItCanAndLosesNothing) {
  Sweep(*injector_, faults::AllFaultKinds(),
        {.name = "orderly stop",
         .prepare = [this] { StartWithUnsavedChanges(DiskFull()); },
         .run = [this] { Stop(); },
         .check =
             [this](const Round& round) {
               int saved = 0;
               for (const std::string& value : OnDisk()) {
                 EXPECT_TRUE(value == "old" || value == "new") << value;
                 saved += value == "new" ? 1 : 0;
               }
               EXPECT_TRUE(saved >= kTables - 1 || round.span == FaultSpan::FromThenOn) << saved;
               return saved == kTables ? Outcome::Survived : Outcome::Failed;
             }});
}

// Building the service may fail as a whole, for want of memory alone. Nothing on the disk is touched by it.
TEST_F(LifecycleSweep, AStartLoadsEveryTableOrTouchesNothing) {
  Sweep(*injector_, faults::AllFaultKinds(),
        {.name = "start of the service",
         .prepare = [this] { PutOldFiles(); },  // a stop may write an empty table over a file that was not loaded
         .run =
             [this] {
               try {
                 service = KT::MarnockTestAccess::Make();
                 service->Init();
               } catch (const std::bad_alloc&) {
               }
             },
         .check =
             [this](const Round& round) {
               EXPECT_TRUE(service != nullptr || IsMemoryFault(round.kind));
               EXPECT_TRUE(HasOldFiles());
               return service != nullptr && AnswersWith("old") ? Outcome::Survived : Outcome::Failed;
             }});
}

}  // namespace
