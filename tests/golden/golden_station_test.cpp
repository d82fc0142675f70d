// The golden unit on the virtual bench: a unit that is recorded once, and run again on benches that are not what they
// were.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "app/golden/golden_check.h"
#include "station/recorded_station.h"

namespace orvane::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::uint64_t kGoldenSeed = 3;

struct Bench {
  double cableLoss = 0.5;
  double leadLoss = 0.01;
  std::vector<std::string> faults{};
  /// What an engineer has set on the panels before.
  std::function<void(VirtualStation&)> set = [](VirtualStation&) {};
};

RunRecord RunOn(const Bench& bench) {
  bench::BenchOptions options = OptionsOf(kGoldenSeed, bench.faults);
  options.cableLossDb = bench.cableLoss;
  options.leadLossVolts = bench.leadLoss;
  RecordedStation recorded(options);
  bench.set(recorded.station);
  (void)recorded.station.TakeTargetThrough();
  return recorded.TheRecord();
}

const RunRecord& Reference() {
  static const RunRecord reference = RunOn({});
  return reference;
}

GoldenFinding CheckedOn(const Bench& bench) { return CheckGolden(Reference(), RunOn(bench), {}); }

TEST(GoldenStation, ARunOfTheSameUnitOnTheSameBenchIsInsideAgainAndAgain) {
  RecordedStation recorded(kGoldenSeed);
  (void)recorded.station.TakeTargetThrough();
  for (int run = 0; run < 20; ++run) {
    recorded.kept->Settle();
    recorded.kept->records.clear();
    (void)recorded.station.InitializeTarget();
    ASSERT_TRUE(IsCompletePass(recorded.TheRecord())) << recorded.station.Steps();
    const GoldenFinding finding = CheckGolden(Reference(), recorded.TheRecord(), {});
    EXPECT_TRUE(finding.Inside()) << finding.Text() << " The bench's noise goes on from run to run.";
  }
}

TEST(GoldenStation, ACableThatLosesMorePassesTheRunAndNotTheCheck) {
  const RunRecord run = RunOn({.cableLoss = 1});
  ASSERT_TRUE(IsCompletePass(run)) << run.end->reason;
  const GoldenFinding finding = CheckGolden(Reference(), run, {});
  EXPECT_THAT(
      finding.pointsTo,
      ElementsAre("Powers of both bands read some 0.5 dB too low: look at the RF cable, its plugs and its losses."));
  for (const GoldenDifference& each : finding.differences) {
    if (!each.reading.ends_with(".power")) continue;
    EXPECT_NEAR(*each.value - each.expected, -0.5, 0.15) << each.words;
  }
  EXPECT_THAT(CheckedOn({.cableLoss = 0}).pointsTo,
              ElementsAre(HasSubstr("some 0.5 dB too high: look at the RF cable")));
}

TEST(GoldenStation, ALossThatIsWrongForOneBandPointsToThatBand) {
  const auto lossOf = [](TextBox FrmAutoCal::*box) {
    return [box](VirtualStation& station) {
      station.Panels().autoCal.Touch();
      station.op.Type(station.Panels().autoCal.*box, "-1.5");
    };
  };
  EXPECT_THAT(CheckedOn({.set = lossOf(&FrmAutoCal::txtLoss)}).pointsTo,
              ElementsAre("Powers of GSM alone read some 1 dB too high: look at the Tx loss of that band."));
  EXPECT_THAT(CheckedOn({.set = lossOf(&FrmAutoCal::txtDCSLoss)}).pointsTo,
              ElementsAre("Powers of DCS alone read some 1 dB too high: look at the Tx loss of that band."));
}

TEST(GoldenStation, AReceiverThatHearsLessPointsToTheWayToTheUnit) {
  const auto set = [](VirtualStation& station) {
    FrmAutoCal& panel = station.Panels().autoCal;
    panel.Touch();
    station.op.Type(panel.txtRxCableLossGSM, "1.5");
    station.op.Type(panel.txtRxCableLossDCS, "1.5");
  };
  const GoldenFinding finding = CheckedOn({.set = set});
  EXPECT_THAT(finding.pointsTo, ElementsAre(HasSubstr("look at the test set's generator")));
}

TEST(GoldenStation, LeadsThatLoseMorePointToTheSupply) {
  const GoldenFinding finding = CheckedOn({.leadLoss = 0.05});
  EXPECT_THAT(finding.pointsTo, ElementsAre(HasSubstr("look at the supply, its leads and their loss")));
}

TEST(GoldenStation, ABadModulationPointsToTheClock) {
  EXPECT_THAT(CheckedOn({.faults = {"phase/4.5"}}).pointsTo, ElementsAre(HasSubstr("reference clock")));
}

TEST(GoldenStation, ARunThatFailsIsOutside) {
  const GoldenFinding finding = CheckedOn({.faults = {"battery"}});
  EXPECT_FALSE(finding.Inside());
  EXPECT_NE(finding.shortfall, "");
}

}  // namespace
}  // namespace orvane::test
