#include "base/decimal4.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "base/failure.h"

namespace orvane {
namespace {

__extension__ using Wide = __int128;

/// Whether `rounded` is the whole number next to dividend / divisor, a half going to the even neighbour.
bool IsNearest(Wide rounded, Wide dividend, Wide divisor) {
  const Wide twice = 2 * (rounded * divisor - dividend);
  const Wide size = divisor < 0 ? -divisor : divisor;
  const Wide off = twice < 0 ? -twice : twice;
  return off < size || (off == size && rounded % 2 == 0);
}

TEST(Decimal4, KeepsFourDecimalsOfAText) {
  const std::vector<std::pair<std::string, std::int64_t>> texts{
      {"0", 0},         {"-0.5", -5000},    {"943.067", 9430670}, {"0.00005", 0},
      {"0.00015", 2},   {"0.000050001", 1}, {"-0.00025", -2},     {"32", 320000},
      {"&H10", 160000}, {"1.0119", 10119},  {"9.91E+2", 9910000},
  };
  for (const auto& [text, raw] : texts) EXPECT_EQ(Decimal4::FromText(text).Raw(), raw) << text;
  for (const std::string text : {"9.91E+37", "922337203685477.5808", "1e15", "-922337203685477.5809", "-1e15"}) {
    EXPECT_THROW((void)Decimal4::FromText(text), StationFailure) << text;
  }
  EXPECT_EQ(Decimal4::FromText("922337203685477.5807").Raw(), std::numeric_limits<std::int64_t>::max());
}

TEST(Decimal4, ReadsItsLeastNumberButCannotTurnItRound) {
  for (const char* text : {"-922337203685477.5808", "-922337203685477.58081", "-9223372036854775808e-4"}) {
    EXPECT_EQ(Decimal4::FromText(text).Raw(), std::numeric_limits<std::int64_t>::min()) << text;
  }
  const Decimal4 least = Decimal4::FromText("-922337203685477.5808");
  EXPECT_EQ(Decimal4::FromText(least.Text()), least);
  EXPECT_THROW((void)least.Abs(), StationFailure);
  EXPECT_THROW((void)-least, StationFailure);
}

TEST(Decimal4, HasTheShortestText) {
  const std::vector<std::pair<std::int64_t, std::string>> texts{
      {0, "0"},
      {-5000, "-0.5"},
      {9430670, "943.067"},
      {70000, "7"},
      {1, "0.0001"},
      {-1, "-0.0001"},
      {100, "0.01"},
      {-123456789, "-12345.6789"},
      {std::numeric_limits<std::int64_t>::min(), "-922337203685477.5808"},
  };
  for (const auto& [raw, text] : texts) EXPECT_EQ(Decimal4::FromRaw(raw).Text(), text);
}

TEST(Decimal4, ConstantsAreExact) {
  static_assert("0.25"_d4.Raw() == 2500);
  static_assert("-74.5"_d4.Raw() == -745000);
  static_assert("3"_d4.Raw() == 30000);
  static_assert("0.0607"_d4.Raw() == 607);
  static_assert(Decimal4(40) > "39.9999"_d4);
  static_assert((-"0.5"_d4).Abs() == "0.5"_d4);
}

TEST(Decimal4, RoundsProductsAndQuotientsHalfToEven) {
  std::mt19937_64 random(3);
  std::uniform_int_distribution<std::int64_t> raws(-2000000, 2000000);
  for (int turn = 0; turn < 20000; ++turn) {
    const std::int64_t a = raws(random);
    const std::int64_t b = turn % 3 == 0 ? raws(random) / 10000 * 5000 : raws(random);
    const auto x = Decimal4::FromRaw(a);
    const auto y = Decimal4::FromRaw(b);
    EXPECT_EQ((x + y).Raw(), a + b);
    EXPECT_EQ((x - y).Raw(), a - b);
    EXPECT_TRUE(IsNearest((x * y).Raw(), Wide{a} * b, 10000)) << a << " * " << b;
    if (b != 0) {
      EXPECT_TRUE(IsNearest((x / y).Raw(), Wide{a} * 10000, b)) << a << " / " << b;
    }
    EXPECT_TRUE(IsNearest(x.ToInteger(), a, 10000)) << a;
    EXPECT_EQ(Decimal4::FromText(x.Text()), x);
  }
  EXPECT_EQ((Decimal4(5) / Decimal4(2)).ToInteger(), 2);
  EXPECT_EQ((Decimal4(7) / Decimal4(2)).ToInteger(), 4);
  EXPECT_EQ("40.5"_d4.ToInteger(), 40);
}

TEST(Decimal4, FailsWhenAResultLeavesTheRange) {
  const auto most = Decimal4::FromRaw(std::numeric_limits<std::int64_t>::max());
  EXPECT_THROW((void)(most + "0.0001"_d4), StationFailure);
  EXPECT_THROW((void)(-most - "0.0002"_d4), StationFailure);
  EXPECT_THROW((void)(most * Decimal4(2)), StationFailure);
  EXPECT_THROW((void)(most / "0.5"_d4), StationFailure);
  EXPECT_THROW((void)(Decimal4(1) / Decimal4(0)), StationFailure);
  EXPECT_THROW((void)Decimal4(32768).ToInteger(), StationFailure);
  EXPECT_THROW((void)Decimal4::FromDouble(1e16), StationFailure);
  EXPECT_THROW((void)Decimal4::FromDouble(std::nan("")), StationFailure);
}

TEST(Decimal4, TakesADoubleHalfToEven) {
  EXPECT_EQ(Decimal4::FromDouble(0.03125).Raw(), 312);
  EXPECT_EQ(Decimal4::FromDouble(0.015625).Raw(), 156);
  EXPECT_EQ(Decimal4::FromDouble(-0.03125).Raw(), -312);
  EXPECT_EQ(Decimal4::FromDouble(-74.5).Raw(), -745000);
}

}  // namespace
}  // namespace orvane
