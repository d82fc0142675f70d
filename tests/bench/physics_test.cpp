#include <gtest/gtest.h>

#include <set>

#include "bench/level_search.h"
#include "bench/road.h"

namespace orvane::bench::test {
namespace {

struct Outcome {
  int dac;
  int passes;
  double error;
  double tolerance;
};

std::vector<Outcome> Calibrate(Road& road, Band band) {
  const bool gsm = band == Band::kGsm;
  road.Tune(band, gsm ? 62 : 699, gsm ? 5 : 30);
  road.Transmit(true);
  Search search{band, gsm ? StepTable::kGsm : StepTable::kDcs, gsm ? 1.0 : -5.0, 0.25};
  const std::vector<Level> levels = gsm ? std::vector<Level>(kGsmLevels.begin(), kGsmLevels.end())
                                        : std::vector<Level>(kDcsLevels.begin(), kDcsLevels.end());
  std::vector<Outcome> outcomes;
  for (const Level& level : levels) {
    search.Run(level, [&](int dac) { return road.PowerAt(dac); });
    outcomes.push_back({search.dac, search.passes, std::abs(search.measured - level.targetDbm), search.tolerance});
  }
  search.table = StepTable::kChannel;
  const std::array<int, 3> channels = gsm ? std::array{5, 124, 975} : std::array{512, 781, 885};
  for (const int channel : channels) {
    road.Tune(band, channel, gsm ? 5 : 30);
    search.measured = gsm ? 30 : 27;
    search.tolerance = 0.1;
    search.Run(levels.back(), [&](int dac) { return road.PowerAt(dac); });
    outcomes.push_back(
        {search.dac, search.passes, std::abs(search.measured - levels.back().targetDbm), search.tolerance});
  }
  road.Transmit(false);
  return outcomes;
}

TEST(GoodUnit, ReachesEveryLevelWithinItsToleranceInAFewPasses) {
  for (std::uint64_t seed = 0; seed < 400; ++seed) {
    Road road(seed);
    for (const Band band : {Band::kDcs, Band::kGsm}) {
      int passes = 0;
      for (const Outcome& level : Calibrate(road, band)) {
        ASSERT_LE(level.error, level.tolerance + 1e-9) << "seed " << seed << " dac " << level.dac;
        ASSERT_GT(level.dac, 0) << seed;
        ASSERT_LT(level.dac, 1020) << seed;
        ASSERT_GE(level.passes, 1) << "a level that nobody measured: seed " << seed;
        passes += level.passes;
      }
      EXPECT_LE(passes, 19 * 6) << seed;
    }
  }
}

TEST(GoodUnit, DiffersFromUnitToUnitOnItsChannels) {
  std::set<int> differences;
  for (std::uint64_t seed = 0; seed < 60; ++seed) {
    Road road(seed);
    const std::vector<Outcome> outcomes = Calibrate(road, Band::kGsm);
    for (std::size_t i = kGsmLevels.size(); i < outcomes.size(); ++i) {
      differences.insert((outcomes[i].dac - outcomes[kGsmLevels.size() - 1].dac) / 10);
    }
  }
  EXPECT_GE(differences.size(), 4u) << "all units have the same channel codes";
}

TEST(GoodUnit, HasAReceiverGainInsideItsLimitsHoweverItsReportIsRead) {
  for (std::uint64_t seed = 0; seed < 3000; ++seed) {
    const UnitTraits unit = UnitOf(seed);
    for (const int reference : {40, 700}) {
      for (const double offset : {0.067, -0.067, 0.0}) {
        const double gain = ReceiveGainDb(unit, reference, DownlinkMHz(reference) + offset);
        // A fraction .03 reads as .3: up to 0.82 dB more than was meant. Twice the gain has to be 171..191.
        EXPECT_GT(gain - 0.1, 85.5) << seed;
        EXPECT_LT(gain + 0.82 + 0.1, 95.5) << seed;
      }
    }
  }
}

TEST(GoodUnit, CountsItsBatteryInsideTheWindows) {
  for (std::uint64_t seed = 0; seed < 3000; ++seed) {
    const UnitTraits unit = UnitOf(seed);
    EXPECT_NEAR(BatteryCounts(unit, 4.2), 625, 6 - 1.5) << seed;
    EXPECT_NEAR(BatteryCounts(unit, 3.35), 496, 7 - 1.5) << seed;
    EXPECT_LT(unit.rmsPhaseDeg, 4) << seed;
    EXPECT_LT(unit.peakPhaseDeg, 15) << seed;
  }
}

TEST(Transmitter, RisesWithEveryDacStep) {
  const UnitTraits unit = UnitOf(3);
  for (const int arfcn : {62, 699}) {
    for (int dac = 1; dac <= 1023; ++dac) {
      EXPECT_GT(TransmitPowerDbm(unit, arfcn, dac, 0), TransmitPowerDbm(unit, arfcn, dac - 1, 0)) << dac;
    }
  }
}

TEST(Transmitter, IsMeasuredThroughTheCableAndCorrected) {
  Road road(5);
  road.Tune(Band::kGsm, 62, 5);
  road.Transmit(true);
  const double corrected = road.PowerAt(600);
  EXPECT_NEAR(corrected, road.bench.Joined().uplink->powerDbm, 0.02);
  road.Tell("SYST:CORR:SGA 0");
  EXPECT_NEAR(road.PowerAt(600), corrected - 0.5, 0.03);
}

TEST(Transmitter, IsHeardOnItsOwnChannelInItsOwnBandOnly) {
  Road road(5);
  road.Tune(Band::kGsm, 62, 5);
  road.Transmit(true);
  EXPECT_LT(road.PowerAt(600), 40);
  road.Tell("RFAN:MAN:CHAN:SELECTED 63");
  EXPECT_GT(road.PowerAt(600), 1e37);
  road.Tell("RFAN:MAN:CHAN:SELECTED 62");
  road.Tell("CALL:CELL:BAND DCS");
  EXPECT_GT(road.PowerAt(600), 1e37);
}

TEST(Bench, IsRepeatableToTheByte) {
  const auto trace = [](std::uint64_t seed) {
    Road road(seed);
    std::string text;
    for (const Band band : {Band::kDcs, Band::kGsm}) {
      for (const Outcome& level : Calibrate(road, band)) {
        text += std::to_string(level.dac) + " " + std::to_string(level.error) + "\n";
      }
    }
    return text;
  };
  EXPECT_EQ(trace(7), trace(7));
  EXPECT_NE(trace(7), trace(8));
}

TEST(PaWeak, StopsShortOfTheTopLevels) {
  Road road(1, {FaultAt(FaultKind::kPaWeak)});
  const std::vector<Outcome> outcomes = Calibrate(road, Band::kGsm);
  EXPECT_LE(outcomes.front().error, outcomes.front().tolerance);
  EXPECT_EQ(outcomes[kGsmLevels.size() - 1].dac, 1020);
}

TEST(PaDead, ReadsAsNoBurst) {
  Road road(1, {ParseFault("pa-dead-txpw@2")});
  road.Tune(Band::kGsm, 62, 5);
  road.Transmit(true);
  EXPECT_LT(road.PowerAt(600), 40);
  EXPECT_EQ(road.PowerAt(600), 9.91E+37);
  road.Tell("INITIATE:TXPOWER");
  EXPECT_EQ(road.Ask("FETC:TXP:POW?"), "+9.91000E+037\n");
}

}  // namespace
}  // namespace orvane::bench::test
