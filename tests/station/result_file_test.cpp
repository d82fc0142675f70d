// The file of a whole run's result, on a disk that does not take it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "station/virtual_station.h"

namespace orvane::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

TEST(ResultFile, ThatCannotBeWrittenCostsTheRunNeitherEepromNorVerdict) {
  VirtualStation station;
  station.files.unwritable.insert("/full/unit.epm");
  station.dialogs.answers = {"/full/unit.epm"};
  station.op.Select(station.Panels().autoCal.optSaveModeEEPROMFile);
  EXPECT_EQ(station.TakeTargetThrough(), std::nullopt);
  EXPECT_THAT(station.boxes.Texts(), ElementsAre("/full/unit.epm: No space left on device"));
  EXPECT_EQ(station.Concluded(), Verdict::Pass);
  EXPECT_FALSE(station.State().report.AllComplete());
  EXPECT_THAT(station.Steps(), HasSubstr("save: No file was written: /full/unit.epm: No space left on device\n"));
  EXPECT_THAT(station.Steps(), HasSubstr("charger: complete"));
  const auto commands = station.journal.Commands();
  EXPECT_EQ(std::count(commands.begin(), commands.end(), "se 1"), 1) << "the EEPROM has it";
}

TEST(ResultFile, ThatIsToGoStandsUntilTheRunHasSavedTheNewOne) {
  VirtualStation station;
  station.files.content["/results/unit.epm"] = "of yesterday";
  station.dialogs.answers = {"/results/unit.epm"};
  station.boxes.answers = {BoxButton::Yes};
  station.op.Select(station.Panels().autoCal.optSaveModeFile);
  std::string whileRunning;
  station.State().report.left.Connect([&](const StepRecord& step) {
    if (step.step == RunStep::TransmitGsm) whileRunning = station.files.content["/results/unit.epm"];
  });
  station.TakeTargetThrough();
  EXPECT_EQ(whileRunning, "of yesterday");
  EXPECT_THAT(station.files.content["/results/unit.epm"], testing::StartsWith("rf_revision"));
  EXPECT_TRUE(station.State().report.AllComplete()) << station.Steps();
}

}  // namespace
}  // namespace orvane::test
