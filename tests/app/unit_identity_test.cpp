// The next unit's serial number, who runs the station, and a station that asks for a serial number.

#include "app/unit_identity.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "panels/run_guard.h"
#include "station/virtual_station.h"

namespace orvane::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A station with an identity as the program has it.
struct Identified {
  explicit Identified(const UnitTexts& texts = {}, bool asks = false) : unit(texts, asks) {
    unit.Follow(on.Panels());
    on.station.Nest().refusal = [this](const Control& button) { return SerialRefusal(unit, on.Panels(), button); };
    for (Panel* panel : on.Panels().All()) panel->Touch();
  }
  std::vector<Button*> Starters() {
    const auto runs = RunStarters(on.Panels().autoCal, on.Panels().mpAutoCal, on.Panels().baseBand);
    std::vector<Button*> starters(runs.begin(), runs.end());
    starters.push_back(&on.Panels().main.cmdTargetInitialize);
    return starters;
  }

  UnitIdentity unit;
  VirtualStation on;
};

TEST(UnitIdentity, ASerialNumberIsOneRunsAndAllElseStays) {
  const UnitTexts texts{"A-1", "Kim", "T9300", {{"line", "A"}}};
  Identified station(texts);
  std::vector<std::string> inSteps;
  station.on.State().report.entered.Connect([&](RunStep) {
    EXPECT_TRUE(station.unit.InRun());
    inSteps.push_back(station.unit.Texts().serial);
  });
  station.on.TakeTargetThrough();
  ASSERT_EQ(station.on.Concluded(), Verdict::Pass);
  EXPECT_THAT(inSteps, ElementsAre("A-1", "A-1", "A-1", "A-1", "A-1"));
  EXPECT_FALSE(station.unit.InRun());
  EXPECT_EQ(station.unit.Texts(), (UnitTexts{"", "Kim", "T9300", {{"line", "A"}}}));
}

TEST(UnitIdentity, ARunStartedByHandForgetsItToo) {
  Identified station({.serial = "A-1"});
  station.on.op.Click(station.on.Panels().autoCal.cmdGSM);
  EXPECT_EQ(station.unit.Texts().serial, "");
}

TEST(UnitIdentity, ABringUpThatFailsKeepsItForTheNext) {
  Identified station({.serial = "A-1"});
  bench::BenchOptions silent;
  silent.faults.push_back(bench::ParseFault("silent"));
  station.on.bench.Insert(silent);
  station.on.InitializeTarget();
  EXPECT_EQ(station.on.boxes.Texts().back(), "Target을 Power On 해 주십시요");
  EXPECT_EQ(station.unit.Texts().serial, "A-1");
}

TEST(UnitIdentity, TellsOfEachChangeOnce) {
  Identified station;
  int told = 0;
  station.unit.changed.Connect([&] { ++told; });
  station.unit.Change({.serial = "A-1"});
  EXPECT_EQ(told, 1);
  station.on.op.Click(station.on.Panels().autoCal.cmdGSM);
  EXPECT_EQ(told, 3) << "as a run begins and as it ends";
}

TEST(AskSerial, EveryWayToStartARunIsRefusedWithABoxAheadOfTheFirstByte) {
  Identified station({}, true);
  station.on.InitializeInstruments();
  station.on.journal.Clear();
  const long commands = station.on.State().tally.commands;
  for (Button* starter : station.Starters()) {
    SCOPED_TRACE(starter->Name());
    station.on.boxes.shown.clear();
    EXPECT_EQ(station.on.op.Click(*starter), "A serial number is needed.");
    ASSERT_EQ(station.on.boxes.shown.size(), 1U);
    EXPECT_EQ(station.on.boxes.shown[0].text, "A serial number is needed.");
    EXPECT_EQ(station.on.boxes.shown[0].title, "ORVANE");
    EXPECT_TRUE(station.on.station.Nest().Idle());
  }
  EXPECT_EQ(station.on.State().tally.commands, commands);
  for (const std::string& line : station.on.journal.Lines()) EXPECT_TRUE(line.starts_with("box: ")) << line;
  EXPECT_FALSE(station.on.bench.Serial().PortOpen());
  EXPECT_FALSE(station.on.State().report.Concluded());
}

TEST(AskSerial, ASerialNumberLetsOneRunBegin) {
  Identified station({}, true);
  station.on.InitializeInstruments();
  station.unit.Change({.serial = "A-1"});
  EXPECT_EQ(station.on.InitializeTarget(), std::nullopt);
  EXPECT_EQ(station.on.Concluded(), Verdict::Pass) << "the run's own clicks are not held up";
  EXPECT_TRUE(station.on.State().report.AllComplete()) << station.on.Steps();
  EXPECT_EQ(station.on.InitializeTarget(), "A serial number is needed.") << "the next one needs its own";
}

TEST(AskSerial, ARefusalEndsNothingThatIsUnderWay) {
  Identified station({}, true);
  station.on.InitializeInstruments();
  std::optional<std::string> refused;
  // Within a wait of the upload, which is no run.
  station.on.dialogs.answers = {"/work/backup.epm"};
  station.on.bench.Serial().Open();
  station.on.loop.PostAt(station.on.loop.Now() + std::chrono::milliseconds(20),
                         [&] { refused = station.on.op.Click(station.on.Panels().autoCal.cmdGSM); });
  EXPECT_EQ(station.on.op.Click(station.on.Panels().downLoad.cmdUpLoad), std::nullopt);
  EXPECT_EQ(refused, "A serial number is needed.");
  EXPECT_TRUE(station.on.files.content.contains("/work/backup.epm"));
}

TEST(AskSerial, ADisabledButtonIsDisabledFirst) {
  Identified station({}, true);
  station.on.Panels().autoCal.cmdGSM.SetEnabled(false);
  EXPECT_THROW(station.on.op.Click(station.on.Panels().autoCal.cmdGSM), ControlDisabled);
  EXPECT_THAT(station.on.boxes.shown, IsEmpty());
}

TEST(AskSerial, AStationThatDoesNotAskNeedsNone) {
  Identified station;
  EXPECT_EQ(station.on.TakeTargetThrough(), std::nullopt);
  EXPECT_EQ(station.on.Concluded(), Verdict::Pass);
}

}  // namespace
}  // namespace orvane::test
