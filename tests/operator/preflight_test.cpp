// What is looked at ahead of a unit.

#include "app/operator/preflight.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "adapters/disk_files.h"
#include "station/virtual_station.h"
#include "support/scratch_folder.h"

namespace orvane::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A station whose instruments are ready.
class Preflight : public testing::Test {
 protected:
  void SetUp() override { on_.InitializeInstruments(); }
  std::vector<std::string> Lacks(const std::function<void(PreflightPlaces&)>& change = {}) {
    PreflightPlaces places{on_.State(), on_.Panels(), on_.files};
    if (change) change(places);
    std::vector<std::string> what;
    for (const Lack& lack : LacksAheadOfAUnit(places)) {
      EXPECT_FALSE(lack.toDo.isEmpty());
      what.push_back((lack.stopsUnits ? "" : "(") + lack.what.toStdString());
    }
    return what;
  }

  VirtualStation on_;
};

TEST_F(Preflight, AReadyStationLacksNothing) { EXPECT_THAT(Lacks(), IsEmpty()); }

TEST_F(Preflight, TablesAndInstrumentsAreToldTogether) {
  on_.State().rf.damage = "TI532.epm was not loaded.";
  on_.State().ramp.damage = "RampTable.dat has the SHA-256 12..., not 34... as the profile says.";
  on_.State().testSet.TestSetReady = false;
  on_.State().charger.powerError = true;
  EXPECT_THAT(Lacks(), ElementsAre("TI532.epm was not loaded.",
                                   "RampTable.dat has the SHA-256 12..., not 34... as the profile says.",
                                   "The test set is not initialized.", "The supply is not initialized."));
}

TEST_F(Preflight, ADeviceThatIsNotThereIsTold) {
  EXPECT_THAT(Lacks([](PreflightPlaces& places) { places.device = "/dev/no-such-line"; }),
              ElementsAre("The line to the phone, /dev/no-such-line, is not there."));
  EXPECT_THAT(Lacks([](PreflightPlaces& places) { places.device = "/dev/null"; }), IsEmpty());
}

TEST_F(Preflight, RecordsThatCannotBeKeptHarmNoUnit) {
  RecordNews news;
  const auto withNews = [&news](PreflightPlaces& places) { places.records = &news; };
  EXPECT_THAT(Lacks(withNews), IsEmpty());
  Kept kept;
  kept.fault = "The disk is full.";
  news.Tell(kept);
  EXPECT_THAT(Lacks(withNews), ElementsAre("(The records of the runs cannot be kept: The disk is full."));
}

TEST_F(Preflight, LossesOfLongAgoHarmNoUnitButAreTold) {
  const ScratchFolder folder;
  DiskFiles files(folder.Path(""), folder.Path(""));
  std::ofstream(folder.Path("Cable.loss")) << "losses";
  std::filesystem::last_write_time(folder.Path("Cable.loss"),
                                   std::filesystem::file_time_type::clock::now() - std::chrono::hours(24 * 91 + 1));
  const auto lacks = [&](std::optional<int> days) {
    std::vector<std::string> what;
    for (const Lack& lack : LacksAheadOfAUnit({on_.State(), on_.Panels(), files, "", nullptr, days})) {
      EXPECT_FALSE(lack.stopsUnits);
      what.push_back(lack.what.toStdString());
    }
    return what;
  };
  EXPECT_THAT(lacks(std::nullopt), IsEmpty());
  EXPECT_THAT(lacks(91), IsEmpty());
  EXPECT_THAT(lacks(90), ElementsAre("The losses of the cables were measured 91 days ago, 90 are allowed."));
}

}  // namespace
}  // namespace orvane::test
