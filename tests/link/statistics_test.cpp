#include "link/statistics.h"

#include "base/failure.h"

namespace orvane {
namespace {

TEST(BitString, GivesTheDigitsAndUsesTheValueUp) {
  Long value = 0x0C80;
  EXPECT_EQ(BitString(value), "110010000000");
  EXPECT_EQ(value, 0);
  EXPECT_EQ(BitString(value), "");
}

TEST(BitsToLong, ReadsBinaryDigits) {
  EXPECT_EQ(BitsToLong(""), 0);
  EXPECT_EQ(BitsToLong("110010"), 50);
  EXPECT_EQ(BitsToLong(std::string(31, '1')), 2147483647);
  EXPECT_THROW((void)BitsToLong(std::string(32, '1')), StationFailure);
}

TEST(BitsToHundredths, RoundsEveryWeightToFourDecimals) {
  EXPECT_EQ(BitsToHundredths(""), 0);
  EXPECT_EQ(BitsToHundredths("1"), 50);
  EXPECT_EQ(BitsToHundredths("01"), 25);
  EXPECT_EQ(BitsToHundredths("001"), 12) << "12.5 goes to the even neighbour";
  EXPECT_EQ(BitsToHundredths("000001"), 2);
  EXPECT_EQ(BitsToHundredths("000010"), 3);
  EXPECT_EQ(BitsToHundredths("000011"), 5);
  EXPECT_EQ(BitsToHundredths("111111"), 98);
}

TEST(Statistic, ReadsItsHundredthsWithoutLeadingZeros) {
  struct Case {
    Long value;
    std::size_t fractionBits;
    std::string text;
  };
  for (const Case& c : {Case{0x0C80, 6, "50"}, Case{0x0C81, 6, "50.2"}, Case{0x0C82, 6, "50.3"}, Case{67, 6, "1.5"},
                        Case{32, 6, "0.5"}, Case{63, 1, "31.5"}, Case{1, 1, "0.5"}, Case{2, 1, "1"}}) {
    EXPECT_EQ(StatisticValue(c.value, c.fractionBits).Text(), c.text) << c.value;
  }
}

TEST(Statistic, OfTooFewDigitsIsNoMeasurement) {
  EXPECT_THROW((void)StatisticValue(31, 6), StationFailure);
  EXPECT_THROW((void)StatisticValue(0, 6), StationFailure);
  EXPECT_THROW((void)StatisticValue(0, 1), StationFailure);
}

}  // namespace
}  // namespace orvane
