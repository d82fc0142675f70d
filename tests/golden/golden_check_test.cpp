// A run of the golden unit against its reference: what differs, and what it points to.

#include "app/golden/golden_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "golden/golden_runs.h"

namespace orvane::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

const RunRecord kReference = GoldenRun();
/// Of both bands: 31 levels and 6 channels.
constexpr std::size_t kPowers = 37;

GoldenFinding Checked(const RunRecord& run, const GoldenLimits& limits = {}) {
  return CheckGolden(kReference, run, limits);
}
GoldenFinding Checked(const BenchChange& change) { return Checked(GoldenRun(change)); }

TEST(GoldenCheck, TheSameReadingsAreInside) {
  const GoldenFinding finding = Checked(kReference);
  EXPECT_TRUE(finding.Inside()) << finding.Text();
  EXPECT_THAT(finding.pointsTo, IsEmpty());
  EXPECT_EQ(finding.Text(), "");
}

TEST(GoldenCheck, ALossThatTheSearchHidesIsFoundAtTheDacValuesThatItTook) {
  RunRecord run = GoldenRun({.gsmLoss = 1, .dcsLoss = 1, .receiveLoss = 1});
  for (const RecordedReading& now : run.readings) {
    if (!now.name.ends_with(".power")) continue;
    RunRecord reference = kReference;
    ASSERT_LT(std::abs(now.value - ReadingIn(reference, now.name).value), 0.5)
        << "what was read is what was looked for";
  }
  const GoldenFinding finding = Checked(run);
  ASSERT_THAT(finding.differences, SizeIs(kPowers)) << finding.Text();
  for (const GoldenDifference& each : finding.differences) {
    EXPECT_NEAR(*each.value - each.expected, -1, 0.1) << each.words;
  }
  EXPECT_THAT(
      finding.pointsTo,
      ElementsAre("Powers of both bands read some 1 dB too low: look at the RF cable, its plugs and its losses."));
}

TEST(GoldenCheck, BeyondTheHighestLevelOfTheReferenceTheRunsOwnLevelsTell) {
  for (const double loss : {-2.0, 2.0}) {
    const GoldenFinding finding = Checked({.gsmLoss = loss, .dcsLoss = loss});
    ASSERT_THAT(finding.differences, SizeIs(kPowers)) << finding.Text();
    for (const GoldenDifference& each : finding.differences) {
      EXPECT_NEAR(*each.value - each.expected, -loss, 0.15) << each.words;
    }
  }
}

TEST(GoldenCheck, ACableThatLosesMoreInTheHigherBandIsACable) {
  EXPECT_THAT(Checked({.gsmLoss = 0.5, .dcsLoss = 0.8}).pointsTo,
              ElementsAre(HasSubstr("both bands read some 0.7 dB too low: look at the RF cable")));
}

TEST(GoldenCheck, OneBandAlonePointsToItsLoss) {
  EXPECT_THAT(Checked({.gsmLoss = 0.8}).pointsTo,
              ElementsAre("Powers of GSM alone read some 0.8 dB too low: look at the Tx loss of that band."));
  EXPECT_THAT(Checked({.dcsLoss = -0.8}).pointsTo,
              ElementsAre("Powers of DCS alone read some 0.8 dB too high: look at the Tx loss of that band."));
}

TEST(GoldenCheck, OneLevelAlonePointsToTheUnitAndItsContact) {
  RunRecord run = GoldenRun();
  ReadingIn(run, "tx.gsm.level.9.power").value -= 0.5;
  const GoldenFinding finding = Checked(run);
  ASSERT_THAT(finding.differences, SizeIs(1));
  EXPECT_THAT(finding.pointsTo,
              ElementsAre("One value alone is off: look at the golden unit, and at its contact in the fixture."));
  run = GoldenRun();
  ReadingIn(run, "rx.512.level").value -= 20;
  ReadingIn(run, "rx.512.compensation").value -= 5;
  EXPECT_THAT(Checked(run).pointsTo, ElementsAre(StartsWith("One value alone")));
}

TEST(GoldenCheck, PowersThatAreOffEachBySomethingElsePointToTheContact) {
  RunRecord run = GoldenRun();
  for (int level = 5; level < 15; ++level) {
    ReadingIn(run, "tx.gsm.level." + std::to_string(level) + ".power").value -= level % 2 == 0 ? 2 : 0.4;
  }
  EXPECT_THAT(Checked(run).pointsTo, ElementsAre(StartsWith("Powers are off, each by something else")));
}

TEST(GoldenCheck, ReceivedLevelsAlonePointToTheGeneratorAndTheWayToTheUnit) {
  EXPECT_THAT(Checked({.receiveLoss = 1.5}).pointsTo,
              ElementsAre(HasSubstr("look at the test set's generator, and at the RF cable on the way to the unit")));
  EXPECT_THAT(Checked({.receiveLoss = 1}).pointsTo, IsEmpty()) << "the limit itself is inside";
}

TEST(GoldenCheck, BatteryAndClockPointToTheirInstruments) {
  EXPECT_THAT(Checked({.batteryCounts = -12}).pointsTo,
              ElementsAre("Battery counts are off: look at the supply, its leads and their loss."));
  EXPECT_THAT(Checked({.hertz = 150}).pointsTo,
              ElementsAre("Phase or frequency is off: look at the test set's reference clock."));
  RunRecord run = GoldenRun({.batteryCounts = 12});
  ReadingIn(run, "tx.dcs.phase.rms").value += 3;
  EXPECT_THAT(Checked(run).pointsTo, SizeIs(2)) << "two things are two things";
}

TEST(GoldenCheck, SaysBothValuesAndTheLimit) {
  RunRecord run = GoldenRun({.batteryCounts = 12});
  const GoldenFinding finding = Checked(run);
  ASSERT_THAT(finding.differences, SizeIs(2));
  EXPECT_EQ(finding.differences[0].words, "battery full count: 639 count, by the reference 627, limit 5");
  EXPECT_EQ(finding.Text(),
            "battery full count: 639 count, by the reference 627, limit 5, and 1 more. Battery counts are off: look "
            "at the supply, its leads and their loss.");
  run = GoldenRun();
  ReadingIn(run, "tx.gsm.level.5.power").value = 31.5;
  ReadingIn(run, "tx.gsm.level.5.dac").value += 10;
  EXPECT_THAT(Checked(run).differences.front().words,
              testing::MatchesRegex("GSM level 5, power: 31.5 dBm at DAC value [0-9]+, by the reference "
                                    "33(\\.[01][0-9]?)?, limit 0.3"));
}

TEST(GoldenCheck, WhatWasNotReadIsADifference) {
  RunRecord run = GoldenRun();
  std::erase_if(run.readings, [](const RecordedReading& each) { return each.name == "battery.full"; });
  const GoldenFinding finding = Checked(run);
  ASSERT_THAT(finding.differences, SizeIs(1));
  EXPECT_EQ(finding.differences[0].value, std::nullopt);
  EXPECT_EQ(finding.Text(), "battery full count: not read, by the reference 627 count.");
}

TEST(GoldenCheck, WhatIsNoNumberIsADifference) {
  RunRecord run = GoldenRun();
  ReadingIn(run, "battery.full").value = std::numeric_limits<double>::quiet_NaN();
  for (int level = 5; level < 10; ++level) {
    ReadingIn(run, "tx.gsm.level." + std::to_string(level) + ".power").value =
        std::numeric_limits<double>::quiet_NaN();
  }
  EXPECT_THAT(Checked(run).differences, SizeIs(6));
}

TEST(GoldenCheck, ABandOfOneLevelIsHeldAgainstWhatItIs) {
  RunRecord reference = GoldenRun();
  std::erase_if(reference.readings, [](const RecordedReading& each) {
    return each.name.starts_with("tx.gsm.level.") && !each.name.starts_with("tx.gsm.level.7.");
  });
  RunRecord run = reference;
  ReadingIn(run, "tx.gsm.level.7.dac").value += 30;
  EXPECT_TRUE(CheckGolden(reference, run, {}).Inside()) << "nobody knows what a step of the DAC is";
  run = GoldenRun({.gsmLoss = 1});
  const GoldenFinding finding = CheckGolden(reference, run, {});
  ASSERT_THAT(finding.differences, SizeIs(4)) << "by the run's own levels";
  for (const GoldenDifference& each : finding.differences) {
    EXPECT_NEAR(*each.value - each.expected, -1, 0.1) << each.words;
  }
}

TEST(GoldenCheck, ARunThatIsNoCompletePassIsNotInsideWhateverItRead) {
  RunRecord run = GoldenRun();
  run.end->complete = false;
  run.end->reason = "Initialize Power Supply.";
  EXPECT_FALSE(Checked(run).Inside());
  EXPECT_EQ(Checked(run).Text(), "The run was no complete PASS: Initialize Power Supply.");
  run = GoldenRun({.batteryCounts = -30});
  run.end->verdict = "FAIL";
  run.end->complete = false;
  run.end->reason = "";
  std::erase_if(run.readings, [](const RecordedReading& each) { return each.name == "battery.shutdown"; });
  const GoldenFinding failed = Checked(run);
  EXPECT_THAT(failed.differences, SizeIs(1)) << "what it never came to is not told one by one";
  EXPECT_THAT(failed.Text(),
              StartsWith("The run was no complete PASS: The verdict was FAIL. battery full count: 597"));
  EXPECT_THAT(failed.pointsTo, ElementsAre(StartsWith("Battery counts")));
  run.end.reset();
  EXPECT_THAT(Checked(run).shortfall, "The run did not come to its end.");
  run = GoldenRun();
  run.identity.kind = "GSM";
  EXPECT_FALSE(IsCompletePass(run));
}

TEST(GoldenCheck, GoesByTheLimitsThatAreGiven) {
  RunRecord run = GoldenRun({.batteryCounts = 12});
  EXPECT_TRUE(Checked(run, {{"battery.*", 12}}).Inside());
  EXPECT_FALSE(Checked(GoldenRun({.gsmLoss = 0.25}), {{"tx.gsm.*.power", 0.05}}).Inside());
  ReadingIn(run, "tx.gsm.channel.975.code").value += 3;
  EXPECT_THAT(Checked(run, {{"battery.*", 12}, {"tx.*.code", 2}}).differences, SizeIs(1));
}

TEST(GoldenCheck, OfAValueThatWasReadTwiceTheLastOneCounts) {
  RunRecord run = GoldenRun();
  run.readings.push_back({"charger", "battery.full", 700, "count"});
  EXPECT_THAT(Checked(run).differences, SizeIs(1));
  EXPECT_THAT(CheckGolden(run, kReference, {}).differences, SizeIs(1));
  EXPECT_TRUE(CheckGolden(run, run, {}).Inside());
}

TEST(GoldenCheck, AReferenceThatWasACheckItselfIsNoOther) {
  RunRecord reference = GoldenRun();
  reference.readings.push_back({"", "golden.differences", 0, "count", {}, 0});
  EXPECT_TRUE(CheckGolden(reference, kReference, {{"*", 1000}}).Inside());
}

}  // namespace
}  // namespace orvane::test
