#include "rxcal/rx_table.h"

#include <cfenv>
#include <cmath>
#include <optional>
#include <random>

#include "base/failure.h"

namespace orvane {
namespace {

using ::testing::ElementsAre;

std::vector<int> Channels(const RxBandTable& table) {
  std::vector<int> channels;
  for (const RxPoint& row : table.Rows()) channels.push_back(row.channel);
  return channels;
}

std::vector<int> Levels(const RxBandTable& table) {
  std::vector<int> levels;
  for (const RxPoint& row : table.Rows()) levels.push_back(row.level);
  return levels;
}

/// The whole way of a band through the table; which inner channels found a bracket.
struct Built {
  RxBandTable table;
  std::vector<bool> placed;
};

Built Build(const RxGrid& grid, const std::vector<RxPoint>& points) {
  Built built{RxBandTable(grid, points.front()), {}};
  for (std::size_t i = 1; i + 1 < points.size(); ++i) {
    built.placed.push_back(built.table.PlaceInner(points[i - 1], points[i]));
  }
  built.table.PlaceLast(points[points.size() - 2], points.back());
  return built;
}

std::vector<RxPoint> At(std::vector<int> channels, int level = 560) {
  std::vector<RxPoint> points;
  for (const int channel : channels) points.push_back({static_cast<Integer>(channel), static_cast<Integer>(level)});
  return points;
}

TEST(RxGrids, AreTheRoundedSteps) {
  for (int k = 0; k < 6; ++k) {
    EXPECT_EQ(kGsmGrid[static_cast<std::size_t>(k)], std::lround(k * 20.667)) << k;
    EXPECT_EQ(kDcsGrid[static_cast<std::size_t>(k)], std::lround(k * 62.17 + 512)) << k;
  }
  EXPECT_EQ(kGsmGrid[6], 124);
  EXPECT_EQ(kDcsGrid[6], 885);
}

TEST(RxBandTable, DefaultChannelsTakeThePlacesOfTheirBreakpoints) {
  EXPECT_THAT(Channels(Build(kGsmGrid, At({0, 40, 124})).table), ElementsAre(0, 21, 40, 62, 83, 103, 124));
  EXPECT_THAT(Channels(Build(kDcsGrid, At({512, 574, 636, 700, 760, 822, 885})).table),
              ElementsAre(512, 574, 636, 700, 760, 822, 885));
}

TEST(RxBandTable, WalksFromRowToRoundedRow) {
  // Up to channel 40 by 10/40 a channel: 500 + 21 * 0.25 = 505.25. Behind it by -20/84 = -0.2381, held with four
  // decimals: 510 - 22 * 0.2381 = 504.7618, then 505 - 21 * 0.2381 = 499.9999, then 500 - 20 * 0.2381 = 495.238.
  const auto built = Build(kGsmGrid, {{0, 500}, {40, 510}, {124, 490}});
  EXPECT_THAT(Levels(built.table), ElementsAre(500, 505, 510, 505, 500, 495, 490));
}

TEST(RxBandTable, TheSlopeToAnInnerChannelIsNotRounded) {
  // 10001 / 30003 over 30000 channels is 10000; with four decimals it would be 9999.
  const RxGrid wide{0, 30000, 30003, 30005, 30006, 30007, 30008};
  EXPECT_EQ(Build(wide, {{0, 0}, {30003, 10001}, {30008, 10001}}).table.Rows()[1].level, 10000);
}

TEST(RxBandTable, AHalfOfAWalkGoesToTheEvenNeighbour) {
  const RxGrid grid{0, 20, 40, 62, 83, 103, 124};
  EXPECT_EQ(Build(grid, {{0, 501}, {40, 508}, {124, 508}}).table.Rows()[1].level, 504);  // 504.5
  EXPECT_EQ(Build(grid, {{0, 500}, {40, 507}, {124, 507}}).table.Rows()[1].level, 504);  // 503.5
}

TEST(RxBandTable, TheSlopeToTheLastChannelHasFourDecimals) {
  // From (30, 0) to (60, 10) it is 0.3333 a channel: 9999 over 30000 channels.
  const RxGrid wide{0, 30, 30030, 30031, 30032, 30033, 30034};
  EXPECT_EQ(Build(wide, {{0, 0}, {30, 0}, {60, 10}}).table.Rows()[2].level, 9999);
}

TEST(RxBandTable, ATieOfTheLastSlopeGoesToTheEvenDecimal) {
  // 1 / 160 = 0.00625 is held as 0.0062: 10000 channels on that is 62, not 63 or 62.5.
  const RxGrid grid{0, 30, 10030, 10031, 10032, 10033, 10034};
  EXPECT_EQ(Build(grid, {{0, 0}, {30, 0}, {190, 1}}).table.Rows()[2].level, 62);
}

TEST(RxBandTable, HalfWayGoesToTheUpperBreakpoint) {
  EXPECT_THAT(Channels(Build(kGsmGrid, At({0, 31, 124})).table), ElementsAre(0, 21, 31, 62, 83, 103, 124));
  EXPECT_THAT(Channels(Build(kGsmGrid, At({0, 30, 124})).table), ElementsAre(0, 30, 41, 62, 83, 103, 124));
}

TEST(RxBandTable, AChannelAtTheLowestBreakpointOrBelowOrAboveTheHighestFindsNoBracket) {
  for (const int reference : {0, -3, 125, 700}) {
    const auto built = Build(kGsmGrid, At({5, reference, 124}));
    EXPECT_THAT(built.placed, ElementsAre(false)) << reference;
    EXPECT_THAT(Channels(built.table), ElementsAre(5, 21, 41, 62, 83, 103, 124)) << reference;
  }
}

TEST(RxBandTable, ABreakpointItselfBelongsToItsOwnRow) {
  EXPECT_THAT(Channels(Build(kGsmGrid, At({0, 21, 124})).table), ElementsAre(0, 21, 41, 62, 83, 103, 124));
  EXPECT_TRUE(Build(kGsmGrid, At({0, 124, 62})).placed.front());
}

TEST(RxBandTable, ALaterChannelMayPushOutAnEarlierOne) {
  // 580 is nearer to 574, whose row the channel 574 has taken.
  EXPECT_THAT(Channels(Build(kDcsGrid, At({512, 574, 580, 700, 760, 822, 885})).table),
              ElementsAre(512, 580, 636, 700, 760, 822, 885));
}

TEST(RxBandTable, OneChannelTwiceIsADivisionByZero) {
  EXPECT_THROW(Build(kGsmGrid, At({40, 40, 124})), StationFailure);
  EXPECT_THROW(Build(kGsmGrid, At({0, 40, 40})), StationFailure);
  EXPECT_THROW((void)EgsmRows({975, 1}, {975, 2}), StationFailure);
}

TEST(RxBandTable, SumsOverflowAt16Bits) {
  EXPECT_THROW(Build(kGsmGrid, {{0, -20000}, {40, 20000}, {124, 0}}), StationFailure);
  EXPECT_THROW(Build(kGsmGrid, {{-32768, 0}, {40, 0}, {124, 0}}), StationFailure);
  EXPECT_THROW((void)CompensationOf(20000, -20000), StationFailure);
  EXPECT_THROW((void)CompensationOf(20000, 0), StationFailure);
}

TEST(EgsmRows, AlwaysHold999BetweenTheMeasuredTwo) {
  EXPECT_THAT(EgsmRows({975, 560}, {1023, 572}),
              ElementsAre(RxPoint{975, 560}, RxPoint{999, 566}, RxPoint{1023, 572}));
  EXPECT_THAT(EgsmRows({999, 560}, {1005, 590}),
              ElementsAre(RxPoint{999, 560}, RxPoint{999, 560}, RxPoint{1005, 590}));
}

TEST(GMagic, IsTheLevelAboveWhatTheTargetExpects) {
  EXPECT_EQ(GMagicOf(560, 40), 90);
  EXPECT_EQ(GMagicOf(565, 40), 90);  // 90.5 goes to the even neighbour
  EXPECT_EQ(GMagicOf(575, 40), 92);  // 91.5 too
  EXPECT_EQ(GMagicOf(566, 40), 91);
  EXPECT_EQ(GMagicOf(0, 40), 34);
}

TEST(GMagic, LimitsAre171And191HalfDb) {
  for (const int good : {171, 172, 180, 191}) EXPECT_TRUE(IsGoodGMagic(static_cast<Integer>(good))) << good;
  for (const int bad : {-180, 0, 170, 192}) EXPECT_FALSE(IsGoodGMagic(static_cast<Integer>(bad))) << bad;
}

TEST(Compensation, IsTheDifferenceFromTheReferenceInHalfDb) {
  EXPECT_EQ(CompensationOf(560, 560), 0);
  EXPECT_EQ(CompensationOf(560, 530), 6);
  EXPECT_EQ(CompensationOf(530, 560), -6);
  EXPECT_EQ(CompensationOf(625, 600), 5);
  EXPECT_EQ(CompensationOf(600, 577), 5);     // 4.6
  EXPECT_EQ(CompensationOf(600, 587), 3);     // 2.6
  EXPECT_EQ(CompensationOf(16383, 0), 3277);  // 3276.6
}

/// The same table written down a second time, plainly, with everything counted from 1 and nothing shared.
struct Plain {
  int row[8][3] = {};
  int grid[7] = {};
  int start = 0;
  std::vector<bool> placed;
  bool overflow = false;

  int Fit(long value) {
    if (value < -32768 || value > 32767) overflow = true;
    return static_cast<int>(value);
  }

  explicit Plain(const RxGrid& g, const std::vector<RxPoint>& points) {
    for (int k = 0; k <= 6; ++k) grid[k] = g[static_cast<std::size_t>(k)];
    const int n = static_cast<int>(points.size());
    const auto ch = [&](int i) { return static_cast<int>(points[static_cast<std::size_t>(i - 1)].channel); };
    const auto lev = [&](int i) { return static_cast<int>(points[static_cast<std::size_t>(i - 1)].level); };
    row[1][1] = ch(1);
    row[1][2] = lev(1);
    for (int i = 2; i <= n - 1; ++i) Inner(ch(i), lev(i), ch(i - 1), lev(i - 1));
    row[7][1] = ch(n);
    row[7][2] = lev(n);
    const int up = lev(n) - lev(n - 1);
    const int along = ch(n) - ch(n - 1);
    const long tenThousandths = std::lrint(static_cast<long double>(up) * 10000 / along);
    for (int k = start + 1; k <= 5; ++k) {
      row[k + 1][1] = grid[k];
      const long raw = (row[k + 1][1] - row[k][1]) * tenThousandths + row[k][2] * 10000L;
      row[k + 1][2] = Fit(std::lrint(static_cast<long double>(raw) / 10000));
    }
  }

  void Inner(int channel, int level, int channelBefore, int levelBefore) {
    for (int j = start; j <= 5; ++j) {
      if (grid[j + 1] < channel || grid[j] >= channel) {
        row[j + 2][1] = grid[j + 1];
        continue;
      }
      const double slope = static_cast<double>(level - levelBefore) / (channel - channelBefore);
      const bool lower = std::abs(channel - grid[j]) < std::abs(channel - grid[j + 1]);
      const int at = lower ? j + 1 : j + 2;
      row[at][1] = channel;
      row[at][2] = level;
      for (int k = start + 1; k <= (lower ? j - 1 : j); ++k) {
        row[k + 1][2] = Fit(std::lrint((row[k + 1][1] - row[k][1]) * slope + row[k][2]));
      }
      grid[lower ? j : j + 1] = channel;
      start = lower ? j : j + 1;
      placed.push_back(true);
      return;
    }
    placed.push_back(false);
  }
};

TEST(RxBandTable, AgreesWithAPlainSecondFormulationOnEveryBand) {
  ASSERT_EQ(std::fegetround(), FE_TONEAREST);
  std::mt19937 random(20260731);
  int compared = 0;
  for (int trial = 0; trial < 20000; ++trial) {
    const bool gsm = trial % 2 == 0;
    const RxGrid& grid = gsm ? kGsmGrid : kDcsGrid;
    std::uniform_int_distribution<int> channel(grid.front() - 5, grid.back() + 5);
    std::uniform_int_distribution<int> level(300, 900);
    std::vector<RxPoint> points(gsm ? 3 : 7);
    for (RxPoint& point : points) {
      point = {static_cast<Integer>(channel(random)), static_cast<Integer>(level(random))};
    }
    if (trial % 3 != 0) {
      std::sort(points.begin(), points.end(), [](RxPoint a, RxPoint b) { return a.channel < b.channel; });
    }
    bool twice = false;
    for (std::size_t i = 1; i < points.size(); ++i) twice |= points[i].channel == points[i - 1].channel;
    if (twice) continue;
    const Plain plain(grid, points);
    if (plain.overflow) {
      ASSERT_THROW(Build(grid, points), StationFailure) << trial;
      continue;
    }
    const Built built = Build(grid, points);
    ASSERT_EQ(built.placed, plain.placed) << trial;
    for (std::size_t r = 1; r <= 7; ++r) {
      ASSERT_EQ(built.table.Rows()[r - 1].channel, plain.row[r][1]) << "trial " << trial << " row " << r;
      ASSERT_EQ(built.table.Rows()[r - 1].level, plain.row[r][2]) << "trial " << trial << " row " << r;
    }
    ++compared;
  }
  EXPECT_GT(compared, 15000);
}

}  // namespace
}  // namespace orvane
