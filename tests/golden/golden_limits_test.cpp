#include "app/golden/golden_limits.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace orvane::test {
namespace {

using namespace std::chrono_literals;

TEST(GoldenLimits, AStarStandsForAnyCharacters) {
  for (const auto& [pattern, name] : {std::pair{"battery.full", "battery.full"},
                                      {"battery.*", "battery.full"},
                                      {"*.full", "battery.full"},
                                      {"*", "battery.full"},
                                      {"tx.*.power", "tx.gsm.level.5.power"},
                                      {"tx.*.level.*.power", "tx.gsm.level.5.power"},
                                      {"*5*", "tx.gsm.level.5.power"},
                                      {"ab*ba", "abba"}}) {
    EXPECT_TRUE(FitsPattern(pattern, name)) << pattern << " " << name;
  }
  for (const auto& [pattern, name] : {std::pair{"battery", "battery.full"},
                                      {"", "battery.full"},
                                      {"battery.*l.", "battery.full"},
                                      {"full*", "battery.full"},
                                      {"tx.*.power", "tx.gsm.level.5.dac"},
                                      {"tx.*.power*x", "tx.gsm.level.5.power"},
                                      {"ab*ba", "aba"}}) {
    EXPECT_FALSE(FitsPattern(pattern, name)) << pattern << " " << name;
  }
}

TEST(GoldenLimits, TheFirstOneThatFitsCountsAndTheDefaultsStandBehindThem) {
  const GoldenLimits given{{"tx.gsm.level.5.power", 0.1}, {"tx.gsm.*", 7}, {"tx.gsm.level.*.power", 9}};
  EXPECT_EQ(AllowedDifference(given, "tx.gsm.level.5.power"), 0.1);
  EXPECT_EQ(AllowedDifference(given, "tx.gsm.level.6.power"), 7);
  EXPECT_EQ(AllowedDifference(given, "tx.gsm.level.6.dac"), 7) << "asked for, a DAC value is compared";
  EXPECT_EQ(AllowedDifference(given, "tx.dcs.level.6.power"), 0.3);
}

TEST(GoldenLimits, ByThemselvesCompareWhatACableOrAnInstrumentCanChange) {
  for (const char* const compared :
       {"rx.512.level", "rx.512.compensation", "rx.gsm.gmagic", "tx.dcs.channel.885.power", "tx.gsm.phase.rms",
        "tx.gsm.phase.peak", "tx.dcs.frequency_error", "battery.full", "battery.shutdown"}) {
    EXPECT_TRUE(AllowedDifference({}, compared)) << compared;
  }
  for (const char* const left : {"tx.gsm.level.5.dac", "tx.gsm.channel.975.code", "road.seconds"}) {
    EXPECT_FALSE(AllowedDifference({}, left)) << left;
  }
}

TEST(CheckEvery, IsAWholeNumberAndItsUnit) {
  EXPECT_EQ(ParseInterval("90m"), 90min);
  EXPECT_EQ(ParseInterval("12h"), 12h);
  EXPECT_EQ(ParseInterval("7d"), 168h);
  EXPECT_EQ(ParseInterval("366d"), 8784h);
  for (const char* const none :
       {"", "h", "12", "12s", "-1h", "0h", "1.5h", "12 h", "12hh", "367d", "99999999999d", "+1h", "2000000000d"}) {
    EXPECT_THROW((void)ParseInterval(none), std::invalid_argument) << none;
  }
}

}  // namespace
}  // namespace orvane::test
