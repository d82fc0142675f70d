#include "txcal/power_search.h"

#include <cmath>
#include <random>

#include "base/failure.h"
#include "txcal/band_table.h"

namespace orvane {
namespace {

using ::testing::ElementsAre;

constexpr SearchNumbers kGsm = kGsmBand.levelSearch.numbers;
constexpr SearchNumbers kDcs = kDcsBand.levelSearch.numbers;
constexpr SearchNumbers kChannel = kGsmBand.channelSearch.numbers;
constexpr SearchNumbers kDcsChannel = kDcsBand.channelSearch.numbers;

/// Some units never let the search end (only the stop control does); the comparison ends there.
constexpr std::size_t kEnoughPasses = 200;

/// The search once more, word by word as an operator would tell it, in whole ten-thousandths and with its own
/// tables.
struct PlainSearch {
  using Raw = long long;

  std::vector<Raw> columnEnds;  // The last one ends the table.
  Raw tableFrom;
  std::vector<Raw> errorFrom;
  std::vector<std::vector<int>> steps;  // By row, then column.
  Raw thirdTolerance;
  int wrap;

  Raw measured = 0;
  Raw tolerance = 0;

  struct Found {
    std::vector<int> dacs;
    int dac;
  };

  static int HalfToEven(int sum) {
    return static_cast<int>(std::nearbyint(sum / 2.0));  // The processor's own rounding is half to even.
  }

  int StepAfter(Raw error, int step) const {
    if (measured < tableFrom || measured >= columnEnds.back()) return step;
    std::size_t column = 0;
    while (measured >= columnEnds[column]) column++;
    for (std::size_t row = errorFrom.size(); row-- > 0;) {
      if (error >= errorFrom[row]) return steps[row][column];
    }
    return step;
  }

  Found Run(Raw target, int initValue, const std::function<Raw(int)>& curve, Raw setting) {
    Found found{};
    int step = 1, dac = initValue - 1, passes = 0, nearPasses = 0, historyPos = 2;
    int history[11] = {1, 2};
    while (found.dacs.size() < kEnoughPasses) {
      Raw error = measured - target;
      if (std::llabs(error) <= tolerance) break;
      if (dac >= 1020 || dac <= 0) break;
      dac = error >= 0 ? dac - step : dac + step;
      history[historyPos] = dac;
      if (dac == history[historyPos - 2]) dac = HalfToEven(history[historyPos] + history[historyPos - 1]);
      historyPos = historyPos + 1;
      if (historyPos == wrap) historyPos = 2;
      if (dac >= 1020) dac = 1020;
      if (dac < 0) dac = 0;
      found.dacs.push_back(dac);
      measured = curve(dac);
      error = std::llabs(measured - target);
      step = StepAfter(error, step);
      if (setting >= 2000) {
        tolerance = setting;
      } else if (measured <= 80000) {
        tolerance = 2000;
      } else if (measured <= 140000) {
        tolerance = 1500;
      } else if (measured <= thirdTolerance) {
        tolerance = 1000;
      } else {
        tolerance = 500;
      }
      if (error < 5000) nearPasses = nearPasses + 1;
      if (nearPasses > 10) break;
      passes = passes + 1;
      if (passes >= 16) {
        step = HalfToEven(step);
        if (step == 0) step = 1;
      }
    }
    found.dac = dac;
    return found;
  }
};

PlainSearch PlainGsm() {
  return {{90000, 150000, 190000, 230000, 270000, 300000, 380000},
          -1000000000,
          {1000, 1500, 2000, 2500, 3000, 4000, 5000, 7000, 10000, 15000, 20000},
          {{1, 1, 2, 2, 4, 4, 5},
           {1, 1, 2, 2, 6, 10, 12},
           {1, 1, 2, 4, 8, 12, 16},
           {1, 1, 5, 5, 10, 16, 20},
           {1, 2, 6, 7, 12, 20, 26},
           {1, 3, 8, 9, 15, 24, 30},
           {1, 4, 10, 12, 18, 32, 38},
           {2, 5, 12, 16, 24, 40, 50},
           {3, 7, 14, 22, 32, 52, 80},
           {4, 10, 18, 35, 45, 70, 90},
           {6, 11, 24, 40, 70, 100, 120}},
          310000,
          11};
}

PlainSearch PlainDcs() {
  return {{40000, 80000, 120000, 160000, 200000, 240000, 350000},
          -1000000000,
          {1000, 1500, 2000, 2500, 3000, 4000, 5000, 7000, 10000, 15000, 20000},
          {{1, 1, 1, 1, 1, 2, 5},
           {1, 1, 1, 1, 2, 3, 10},
           {1, 1, 1, 2, 2, 4, 12},
           {1, 1, 2, 2, 4, 7, 15},
           {1, 1, 2, 3, 5, 10, 20},
           {1, 2, 2, 4, 10, 16, 24},
           {1, 2, 3, 5, 12, 21, 34},
           {1, 2, 3, 6, 14, 30, 56},
           {2, 3, 4, 8, 20, 45, 80},
           {3, 4, 6, 12, 28, 60, 100},
           {4, 6, 10, 18, 40, 90, 130}},
          280000,
          10};
}

PlainSearch PlainChannel() {
  return {{350000},
          240000,
          {300, 500, 1000, 1500, 2000, 2500, 3000, 4000, 5000, 7000, 10000, 15000, 20000},
          {{1}, {2}, {3}, {4}, {5}, {7}, {10}, {15}, {20}, {30}, {40}, {50}, {60}},
          310000,
          10};
}

PlainSearch PlainDcsChannel() {
  PlainSearch plain = PlainChannel();
  plain.thirdTolerance = 280000;
  return plain;
}

PlainSearch::Found RunStation(PowerSearch& search, Decimal4 target, int initValue,
                              const std::function<long long(int)>& curve, Decimal4 setting) {
  PlainSearch::Found found{};
  search.Begin(target, static_cast<Integer>(initValue));
  while (found.dacs.size() < kEnoughPasses && !search.OnTarget() && !search.AtLimit()) {
    const int dac = search.Move();
    found.dacs.push_back(dac);
    search.Learn(Decimal4::FromRaw(curve(dac)), setting);
    if (search.NearEnough()) break;
  }
  found.dac = search.Dac();
  return found;
}

struct Unit {
  std::string what;
  std::function<long long(int)> curve;
};

/// Power curves of a seed's unit: the usual one, one full of steps, one that wanders, one that never moves, one that
/// falls.
std::vector<Unit> Units(unsigned seed) {
  auto random = std::make_shared<std::mt19937>(seed);
  const auto within = [random](double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(*random);
  };
  const double gain = within(12, 26), offset = within(-30, -15), flat = within(-10, 36), swing = within(0.2, 4);
  const auto usual = [gain, offset](int dac) { return offset + gain * std::log10(1.0 + dac); };
  const auto raw = [](double dBm) { return static_cast<long long>(std::llround(dBm * 10000)); };
  return {
      {"usual", [=](int dac) { return raw(usual(dac)); }},
      {"steps of half a dB", [=](int dac) { return raw(std::floor(usual(dac) * 2) / 2); }},
      {"wandering", [=](int dac) { return raw(usual(dac) + within(-swing, swing)); }},
      {"alternating", [=](int dac) { return raw(usual(dac) + (dac % 2 == 0 ? swing : -swing)); }},
      {"flat", [=](int) { return raw(flat); }},
      {"falling", [=](int dac) { return raw(30 - 0.03 * dac); }},
  };
}

struct SearchCase {
  const char* name;
  SearchNumbers numbers;
  PlainSearch (*plain)();
};

TEST(PowerSearch, AgreesWithAPlainSecondFormulationOnManyCurves) {
  const SearchCase searches[] = {{"GSM", kGsm, PlainGsm},
                                 {"DCS", kDcs, PlainDcs},
                                 {"GSM channel", kChannel, PlainChannel},
                                 {"DCS channel", kDcsChannel, PlainDcsChannel}};
  long passes = 0;
  for (const auto& [name, numbers, plainOf] : searches) {
    for (unsigned seed = 0; seed < 50; ++seed) {
      const auto ours = Units(seed), theirs = Units(seed);
      for (std::size_t u = 0; u < ours.size(); ++u) {
        for (const char* setting : {"0.1", "0.2", "0.3"}) {
          PowerSearch search(numbers, 1, "0.25"_d4);
          PlainSearch plain = plainOf();
          plain.measured = 10000;
          plain.tolerance = 2500;
          int initValue = 30 + static_cast<int>(seed % 7) * 5;
          // Targets rise as those of a run, with one that falls in between.
          for (const int target : {3, 7, 8, 11, 15, 14, 21, 25, 29, 31, 33}) {
            const auto expected =
                plain.Run(target * 10000, initValue, theirs[u].curve, Decimal4::FromText(setting).Raw());
            const auto found = RunStation(search, target, initValue, ours[u].curve, Decimal4::FromText(setting));
            ASSERT_EQ(found.dacs, expected.dacs) << name << ", seed " << seed << ", " << ours[u].what << ", target "
                                                 << target << ", setting " << setting;
            ASSERT_EQ(found.dac, expected.dac);
            ASSERT_EQ(search.Measured().Raw(), plain.measured);
            ASSERT_EQ(search.Tolerance().Raw(), plain.tolerance);
            passes += static_cast<long>(found.dacs.size());
            initValue = std::min(900, initValue + initValue / 4);
          }
        }
      }
    }
  }
  EXPECT_GT(passes, 100000) << "the units hardly searched";
}

PowerSearch Started(const SearchNumbers& numbers, Decimal4 measured, Decimal4 target, Integer firstDac) {
  PowerSearch search(numbers, measured, "0.25"_d4);
  search.Begin(target, firstDac);
  return search;
}

TEST(PowerSearch, ComesToTheTablesFirstDacOnItsFirstPass) {
  PowerSearch search = Started(kGsm, 1, 7, 48);
  EXPECT_FALSE(search.OnTarget());
  EXPECT_EQ(search.Move(), 48);
}

TEST(PowerSearch, StartsTwoLowerWhenTheTargetLiesBelowThePowerMeasuredLast) {
  PowerSearch search = Started(kGsm, 30, 7, 48);
  EXPECT_EQ(search.Move(), 46);
}

TEST(PowerSearch, LeavesAtOnceWhenTheOldPowerServesTheNewTarget) {
  const PowerSearch search = Started(kGsm, "7.25"_d4, 7, 48);
  EXPECT_TRUE(search.OnTarget());
  EXPECT_EQ(search.Dac(), 47);
  EXPECT_FALSE(Started(kGsm, "7.2501"_d4, 7, 48).OnTarget());
}

TEST(PowerSearch, TakesTheMeanOfTwoValuesThatItSwingsBetween) {
  // An error of 0.3 dB makes steps of ten.
  PowerSearch search = Started(kChannel, 20, 30, 300);
  EXPECT_EQ(search.Move(), 300);
  search.Learn("29.7"_d4, "0.1"_d4);
  ASSERT_EQ(search.Step(), 10);
  EXPECT_EQ(search.Move(), 310);
  search.Learn("30.3"_d4, "0.1"_d4);
  ASSERT_EQ(search.Step(), 10);
  EXPECT_EQ(search.Move(), 305) << "300, 310 and 300 again";
}

TEST(PowerSearch, RoundsTheMeanHalfToEven) {
  const struct {
    int from;
    int step;
    Decimal4 error;
    int mean;
  } rows[] = {{300, 5, "0.2"_d4, 302}, {301, 5, "0.2"_d4, 304}, {300, 7, "0.25"_d4, 304}, {301, 1, "0.03"_d4, 302}};
  for (const auto& row : rows) {
    PowerSearch search(kChannel, 20, "0.01"_d4);
    search.Begin(30, static_cast<Integer>(row.from));
    ASSERT_EQ(search.Move(), row.from);
    search.Learn(Decimal4(30) - row.error, "0.1"_d4);
    ASSERT_EQ(search.Step(), row.step);
    ASSERT_EQ(search.Move(), row.from + row.step);
    search.Learn(Decimal4(30) + row.error, "0.1"_d4);
    EXPECT_EQ(search.Move(), row.mean) << row.from << " and " << row.from + row.step;
  }
}

TEST(PowerSearch, KeepsTheUnaveragedValueInItsHistory) {
  PowerSearch search = Started(kChannel, 20, 30, 300);
  search.Move();
  search.Learn("29.7"_d4, "0.1"_d4);
  search.Move();
  search.Learn("30.3"_d4, "0.1"_d4);
  ASSERT_EQ(search.Move(), 305);
  // The history holds 300, 310, 300. From 305 five up is 310 again: the mean is that of 310 and 300.
  search.Learn("29.8"_d4, "0.1"_d4);
  ASSERT_EQ(search.Step(), 5);
  EXPECT_EQ(search.Move(), 305);
}

TEST(PowerSearch, ComparesTheFirstPassesWithOneAndTwo) {
  // DAC 1 in the first slot equals slot 0: the mean with slot 1, which holds 2, is 1.5, and the even neighbour 2.
  PowerSearch search = Started(kGsm, 1, 7, 1);
  EXPECT_TRUE(search.AtLimit());
  PowerSearch two = Started(kGsm, 30, 7, 3);
  EXPECT_EQ(two.Move(), 2) << "3 less one, less one more for a target below: 1, which becomes 2";
}

TEST(PowerSearch, StopsAt1020AfterThatPassesMeasuring) {
  PowerSearch search = Started(kGsm, 30, 32, 1000);
  search.Move();
  search.Learn("29.5"_d4, "0.1"_d4);
  EXPECT_FALSE(search.AtLimit());
  EXPECT_EQ(search.Move(), 1020) << "1000 and 100, cut";
  search.Learn("29.6"_d4, "0.1"_d4);
  EXPECT_TRUE(search.AtLimit());
  EXPECT_EQ(search.Dac(), 1020);
}

TEST(PowerSearch, StopsAtZeroBelow) {
  PowerSearch search = Started(kGsm, 30, 7, 10);
  EXPECT_EQ(search.Move(), 8);
  search.Learn(38, "0.1"_d4);
  EXPECT_EQ(search.Step(), 1) << "kept";
  search.Learn("37.9"_d4, "0.1"_d4);
  EXPECT_EQ(search.Move(), 0) << "8 less 120, cut";
  EXPECT_TRUE(search.AtLimit());
}

TEST(PowerSearch, AnErrorOfExactlyZeroMovesDown) {
  PowerSearch search(kGsm, 7, "-1"_d4);
  search.Begin(7, 48);
  ASSERT_FALSE(search.OnTarget());
  EXPECT_EQ(search.Move(), 46);
}

TEST(PowerSearch, GivesUpAfterElevenPassesNearTheTarget) {
  PowerSearch search = Started(kGsm, 1, 32, 600);
  for (int pass = 1; pass <= 11; ++pass) {
    EXPECT_FALSE(search.NearEnough()) << pass;
    search.Move();
    search.Learn("31.5001"_d4, "0.1"_d4);
  }
  EXPECT_TRUE(search.NearEnough());
}

TEST(PowerSearch, HalfADecibelIsNotNear) {
  PowerSearch search = Started(kGsm, 1, 32, 100);
  for (int pass = 1; pass <= 30; ++pass) {
    search.Move();
    search.Learn("31.5"_d4, "0.1"_d4);
  }
  EXPECT_FALSE(search.NearEnough());
}

TEST(PowerSearch, HalvesTheTablesStepFromPassSixteenOnAndCompoundsInKeptCells) {
  PowerSearch search = Started(kGsm, 1, 32, 20);
  for (int pass = 1; pass <= 15; ++pass) {
    search.Move();
    search.Learn("31"_d4, "0.1"_d4);
    ASSERT_EQ(search.Step(), 80) << pass;
  }
  std::vector<int> steps;
  const auto pass = [&](Decimal4 measured) {
    search.Move();
    search.Learn(measured, "0.1"_d4);
    steps.push_back(search.Step());
  };
  pass(31);          // 80, halved.
  pass(31);          // 80 anew, halved.
  pass("31.89"_d4);  // 5: two and a half, to the even two.
  pass(38);          // A kept cell: one.
  pass(38);          // A half goes to zero, and zero becomes one.
  EXPECT_THAT(steps, ElementsAre(40, 40, 2, 1, 1));
}

TEST(PowerSearch, FirstValueThatDoesNotFitIsAnOverflow) {
  PowerSearch search(kGsm, 1, "0.25"_d4);
  EXPECT_THROW(search.Begin(7, -32768), StationFailure);
}

}  // namespace
}  // namespace orvane
