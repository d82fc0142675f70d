#include "base/numbers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cfenv>
#include <cmath>
#include <cstdio>
#include <functional>
#include <limits>
#include <random>

#include "base/decimal4.h"
#include "base/failure.h"
#include "base/parsed_number.h"

namespace orvane {
namespace {

TEST(IsPlainNumber, ComparesCharacterForCharacter) {
  for (const char* text : {"5", "12", "19"}) EXPECT_TRUE(IsPlainNumber(text, 5, 19)) << text;
  for (const char* text : {"", "4", "20", "05", " 5", "5 ", "5.0", "+5", "-5", "&H5", "1e1"}) {
    EXPECT_FALSE(IsPlainNumber(text, 5, 19)) << text;
  }
}

TEST(ToInteger, ReadsDecimalText) {
  const std::vector<std::pair<std::string, Integer>> texts{
      {"0", 0},
      {"7", 7},
      {"-7", -7},
      {"+7", 7},
      {"007", 7},
      {" \t7\r\n", 7},
      {"32767", 32767},
      {"-32768", -32768},
      {"1e2", 100},
      {"1E+2", 100},
      {"120e-1", 12},
      {".5", 0},
      {"5.", 5},
      {"-.5", 0},
      {"0.5", 0},
      {"1.5", 2},
      {"2.5", 2},
      {"-2.5", -2},
      {"-3.5", -4},
      {"2.50001", 3},
      {"32767.4", 32767},
      {"-32768.5", -32768},
      {"1e-999", 0},
      {"0e99999", 0},
      {"100000000000000000000e-20", 1},
  };
  for (const auto& [text, value] : texts) EXPECT_EQ(ToInteger(text), value) << text;
}

TEST(ToInteger, ReadsHexadecimalTextOfUpToFourDigitsAsSigned) {
  const std::vector<std::pair<std::string, Integer>> texts{
      {"&H0", 0},      {"&HF", 15},    {"&hff", 255},      {"&H7FFF", 32767}, {"&H8000", -32768}, {"&HFFFF", -1},
      {"&HFFF6", -10}, {"&H0012", 18}, {" &H1F \r\n", 31}, {"&H00001", 1},    {"&HFFFFFFFF", -1},
  };
  for (const auto& [text, value] : texts) EXPECT_EQ(ToInteger(text), value) << text;
}

TEST(ToLong, ReadsFourDigitsAsSignedToo) {
  const std::vector<std::pair<std::string, Long>> texts{
      {"&HFFFF", -1},
      {"&H0FFFF", 65535},
      {"&H1FFFF", 131071},
      {"&HFFFFFFF", 268435455},
      {"&HFFFFFFFF", -1},
      {"&H80000000", -2147483647 - 1},
      {"2147483647", 2147483647},
      {"2147483647.4", 2147483647},
      {"-2147483648", -2147483647 - 1},
  };
  for (const auto& [text, value] : texts) EXPECT_EQ(ToLong(text), value) << text;
}

TEST(ToInteger, FailsForTextThatIsNoNumber) {
  for (const std::string text :
       {"",     " ",    "-",    "+",   ".",   "-.",    "e5",  "1e",   "1e+", "1e+-5", "1e--5",
        "1 2",  "- 1",  "1-",   "--1", "+-1", "1,000", "$1",  "0x10", "10h", "&H",    "&HG",
        "&H-1", "&H 1", "& H1", "H1",  "&O7", "1.2.3", "TXP", "1d2",  "inf", "nan"}) {
    EXPECT_THROW((void)ToInteger(text), StationFailure) << text;
    EXPECT_THROW((void)ToLong(text), StationFailure) << text;
    EXPECT_THROW((void)ToDouble(text), StationFailure) << text;
    EXPECT_THROW((void)Decimal4::FromText(text), StationFailure) << text;
  }
}

TEST(ToInteger, FailsForNumbersThatDoNotFit) {
  for (const std::string text : {"32768", "-32769", "32767.5", "-32768.51", "9.91E+37", "1e99999", "1e9999999999",
                                 "&H0FFFF", "&H8000000", "&H100000000", "&H0FFFFFFFF", "99999999999999999999"}) {
    EXPECT_THROW((void)ToInteger(text), StationFailure) << text;
  }
  for (const std::string text : {"2147483648", "-2147483649", "2147483647.5", "&H100000000"}) {
    EXPECT_THROW((void)ToLong(text), StationFailure) << text;
  }
}

/// value = mantissa * 10^exponent, taken to `places` decimals half to even, in plain integer arithmetic.
std::int64_t HalfToEven(std::int64_t mantissa, int exponent, int places) {
  std::int64_t unit = 1;
  for (int i = exponent + places; i > 0; --i) mantissa *= 10;
  for (int i = exponent + places; i < 0; ++i) unit *= 10;
  std::int64_t below = mantissa / unit;
  if (below * unit > mantissa) --below;
  const std::int64_t rest = mantissa - below * unit;
  const bool up = 2 * rest > unit || (2 * rest == unit && below % 2 != 0);
  return below + (up ? 1 : 0);
}

TEST(NumbersFromText, RoundHalfToEvenForEveryWayToWriteThem) {
  std::mt19937 random(1);
  std::uniform_int_distribution<int> mantissas(-999999, 999999);
  std::uniform_int_distribution<int> exponents(-8, 2);
  for (int turn = 0; turn < 20000; ++turn) {
    const int exponent = exponents(random);
    // Halves are rare among random numbers, and they are what this is about.
    const int mantissa = turn % 2 == 0 ? mantissas(random) : mantissas(random) / 10 * 10 + 5;
    const std::string text = std::to_string(mantissa) + "e" + std::to_string(exponent);
    EXPECT_EQ(ToLong(text), HalfToEven(mantissa, exponent, 0)) << text;
    EXPECT_EQ(Decimal4::FromText(text).Raw(), HalfToEven(mantissa, exponent, 4)) << text;
    EXPECT_EQ(ToDouble(text), std::strtod(text.c_str(), nullptr)) << text;
  }
}

TEST(RoundToInteger, AgreesWithTheProcessorsRounding) {
  ASSERT_EQ(std::fegetround(), FE_TONEAREST);
  for (int quarters = -4 * 32768; quarters <= 4 * 32767 + 1; ++quarters) {
    const double value = quarters / 4.0;
    ASSERT_EQ(RoundToInteger(value), static_cast<Integer>(std::nearbyint(value))) << value;
  }
  for (const double value :
       {32767.5, -32768.75, 1e300, -1e300, std::numeric_limits<double>::infinity(), std::nan("")}) {
    EXPECT_THROW((void)RoundToInteger(value), StationFailure) << value;
  }
  EXPECT_EQ(RoundToLong(2147483646.5), 2147483646);
  EXPECT_THROW((void)RoundToLong(2147483647.5), StationFailure);
}

TEST(CheckedInteger, PassesWhatFitsAndNothingElse) {
  EXPECT_EQ(CheckedInteger(-32768), -32768);
  EXPECT_EQ(CheckedInteger(32767), 32767);
  EXPECT_THROW((void)CheckedInteger(32768), StationFailure);
  EXPECT_THROW((void)CheckedInteger(-32769), StationFailure);
  EXPECT_EQ(CheckedLong(2147483647), 2147483647);
  EXPECT_THROW((void)CheckedLong(std::int64_t{2147483647} + 1), StationFailure);
}

TEST(NumberText, IsTheShortestPlainForm) {
  const std::vector<std::pair<double, std::string>> texts{
      {0, "0"},     {-0.0, "0"},  {0.5, "0.5"},     {-0.5, "-0.5"},       {50, "50"},         {943.067, "943.067"},
      {0.1, "0.1"}, {0.3, "0.3"}, {-74.5, "-74.5"}, {1000000, "1000000"}, {0.0312, "0.0312"}, {50.2, "50.2"},
  };
  for (const auto& [value, text] : texts) EXPECT_EQ(NumberText(value), text);
}

TEST(NumberText, ReadsBackAsTheSameNumber) {
  std::mt19937 random(2);
  std::uniform_real_distribution<double> values(-1e6, 1e6);
  for (int turn = 0; turn < 5000; ++turn) {
    const double value = values(random);
    EXPECT_EQ(ToDouble(NumberText(value)), value);
  }
}

/// A reading, or the words of its failure.
std::string Outcome(const std::function<std::int64_t()>& read) {
  try {
    return std::to_string(read());
  } catch (const StationFailure& failure) {
    return failure.what();
  }
}

TEST(ParseWhole, IsWhatTheExactReaderMakesOfTheSameText) {
  const std::vector<std::string> words{"",
                                       "0",
                                       "-0",
                                       "007",
                                       "-32768",
                                       "999999999999999999",
                                       "-999999999999999999",
                                       "1000000000000000000",
                                       "+5",
                                       "-",
                                       "--5",
                                       "+-5",
                                       "5-",
                                       "9223372036854775807",
                                       "9223372036854775808",
                                       "12345678901234567890123",
                                       "2.5",
                                       "3.5",
                                       "1e3",
                                       "1e-3",
                                       "1e",
                                       "&H",
                                       "&HFFFF",
                                       "&h0FFFF",
                                       "&H10000",
                                       "&HFFFFFFFF",
                                       "&H100000000",
                                       "&H-1",
                                       "&HG",
                                       "&H12 34",
                                       "0x12",
                                       "nan"};
  for (const std::string& word : words) {
    for (const std::string& text : {word, " " + word, word + "\r\n", "\t" + word + " "}) {
      EXPECT_EQ(Outcome([&] { return ParseWhole(text); }), Outcome([&] { return ParseNumber(text).Scaled(0); }))
          << text;
    }
  }
}

TEST(HexToInteger, IsTheTextBehindItsPrefix) {
  for (const std::string digits :
       {"", "0", "7f", "FFFF", "0FFFF", "10000", "00000001", "100000000", "G", " 1", "-1"}) {
    EXPECT_EQ(Outcome([&] { return HexToInteger(digits); }), Outcome([&] { return ToInteger("&H" + digits); }));
    EXPECT_EQ(Outcome([&] { return HexToLong(digits); }), Outcome([&] { return ToLong("&H" + digits); }));
  }
}

TEST(HexText, HasNoLeadingZerosAndAllDigitsOfANegativeValue) {
  for (int value = -32768; value <= 32767; ++value) {
    char expected[9];
    std::snprintf(expected, sizeof expected, "%X", static_cast<unsigned>(value) & 0xFFFFU);
    ASSERT_EQ(HexText(static_cast<Integer>(value)), expected);
    ASSERT_EQ(ToInteger("&H" + HexText(static_cast<Integer>(value))), value);
  }
  EXPECT_EQ(HexText(Long{-10}), "FFFFFFF6");
  EXPECT_EQ(HexText(Long{0x12AB}), "12AB");
  std::string text = "what was there before";
  for (int value = -32768; value <= 32767; ++value) {
    AssignHexText(text, static_cast<Integer>(value));
    ASSERT_EQ(text, HexText(static_cast<Integer>(value)));
  }
}

}  // namespace
}  // namespace orvane
