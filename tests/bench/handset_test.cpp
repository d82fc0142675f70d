#include "bench/handset.h"

#include <gtest/gtest.h>

#include "bench/bytes_of.h"

namespace orvane::bench::test {
namespace {

struct Unit {
  explicit Unit(std::uint64_t seed = 1) : handset(fixture, Memory(), seed) {}
  std::string Say(int operation, const char* data) {
    return HexOf(handset.Answer({static_cast<std::uint8_t>(operation), BytesOf(data)}));
  }
  /// The 16-bit value of a read reply without escapes.
  int Read(int operation, const char* item) {
    const Bytes reply = Unpadded(handset.Answer({static_cast<std::uint8_t>(operation), BytesOf(item)}));
    return reply.at(3) + 256 * reply.at(4);
  }
  Fixture fixture;
  Handset handset;
};

struct AnswerCase {
  const char* line;
  int operation;
  const char* data;
  const char* reply;
};

TEST(Handset, AnswersEveryCommandWord) {
  const AnswerCase cases[] = {
      {"ti", 32, "", "02 14 00 20 00 00 00 20 02"},
      {"tms 1", 33, "01 00", "02 14 00 21 00 00 00 21 02"},
      {"rfe 0", 35, "00 00", "02 14 00 23 00 00 00 23 02"},
      {"sr 1 2 before any measurement", 36, "01 00 02 00",
       "02 14 00 24 00 00 00 01 00 00 10 00 02 00 00 00 00 00 00 00 27 02"},
      {"scw 16 10", 37, "10 00 00 00 0A 00 00 00", "02 14 00 25 00 00 00 25 02"},
      {"rfpw 2 62", 48, "02 00 3E 00", "02 14 00 30 00 00 00 30 02"},
      {"rfpr 2", 49, "02 00", "02 14 00 31 00 00 10 00 02 00 3E 00 00 00 0D 02"},
      {"rxpw 1 -10", 52, "01 00 F6 FF", "02 14 00 34 00 00 00 34 02"},
      {"rxpr 1", 53, "01 00", "02 14 00 35 00 00 00 01 01 76 01 7F 00 3D 02"},
      {"txpw 4 600", 54, "04 00 58 02", "02 14 00 36 00 00 00 36 02"},
      {"txpr 4", 55, "04 00", "02 14 00 37 00 00 00 04 00 58 10 00 02 00 69 02"},
      {"txpw 4 1024 is no DAC value", 54, "04 00 00 04", "02 14 00 36 10 00 02 00 34 02"},
      {"mpw 19 1", 68, "13 00 01 00", "02 14 00 44 00 00 00 44 02"},
      {"mpr 19", 69, "13 00", "02 14 00 45 00 00 00 13 00 01 00 00 00 57 02"},
      {"mpr 127 in test mode", 69, "7F 00", "02 14 00 45 00 00 00 7F 00 01 00 00 00 3B 02"},
      {"spw 5 0", 80, "05 00 00 00", "02 14 00 50 00 00 00 50 02"},
      {"spr 5", 81, "05 00", "02 14 00 51 00 00 00 05 00 00 00 00 00 54 02"},
      {"stw 10 1 2", 82, "0A 01 02", "02 14 00 52 00 00 00 0A 00 58 02"},
      {"str 10", 83, "0A", "02 14 00 53 00 00 00 0A 00 01 10 00 02 00 5A 02"},
      {"str 7 is no table", 83, "07", "02 14 00 53 00 03 00 07 00 57 02"},
      {"se 1", 84, "01 00", "02 14 00 54 00 00 00 54 02"},
      {"tms 0", 33, "00 00", "02 14 00 21 00 00 00 21 02"},
      {"mpr 127 in normal mode", 69, "7F 00", "02 14 00 45 00 00 00 7F 00 00 00 00 00 3A 02"},
      {"an unknown word", 0, "", ""},
      {"a frame with a byte too few", 48, "02 00 3E", ""},
      {"a frame with a byte too many", 32, "00", ""},
      {"stw with an odd number is sent without data", 82, "", ""},
      {"stw 100 with four words", 82, "64 01 00 02 00 03 00 04 00", ""},
  };
  Unit unit;
  for (const AnswerCase& row : cases) {
    EXPECT_EQ(unit.Say(row.operation, row.data), row.reply) << row.line;
  }
}

TEST(Handset, KeepsItsRampTables) {
  Unit unit;
  const std::string values =
      "00 05 11 12 13 14 15 16 17 18 19 1A 1B 1C 1D 1E 20 21 22 23 24 25 26 27 28 29 2A 2B 2C 2D 2E 2F";
  EXPECT_EQ(unit.Say(56, ("1E " + values).c_str()), "02 14 00 38 00 00 00 38 02");
  EXPECT_EQ(unit.Say(57, "1E"), "02 14 00 39 1E " + values + " 2D 02");
  EXPECT_EQ(unit.Say(56, ("1F " + values).c_str()), "02 14 00 38 10 00 02 00 3A 02") << "there are 31 tables";
  EXPECT_EQ(unit.Say(57, "1F"), "02 14 00 39 10 00 02 00 3B 02");
}

TEST(Handset, StoresFlashTable100AndGivesItBack) {
  Unit unit;
  EXPECT_EQ(unit.Say(82, "64 70 02 00 00 00 00 00 00 F0 01"), "02 14 00 52 00 00 00 64 00 36 02");
  EXPECT_EQ(unit.Say(83, "64"),
            "02 14 00 53 00 00 00 64 00 70 10 00 02 00 00 00 00 00 00 00 00 00 00 00 00 01 70 00 01 01 34 02");
}

TEST(Handset, WritesAndReadsItsEepromBehindAnAddressThatMovesOn) {
  Unit unit;
  EXPECT_EQ(unit.Say(80, "01 00 00 00"), "02 14 00 50 00 00 00 50 02");
  EXPECT_EQ(unit.Say(82, "03 11 12 13"), "02 14 00 52 00 00 00 03 00 51 02");
  EXPECT_EQ(unit.Say(82, "03 84"), "02 14 00 52 00 00 00 03 00 51 02");
  (void)unit.Say(80, "01 00 00 00");
  EXPECT_EQ(unit.Say(83, "03").substr(0, 48), "02 14 00 53 00 00 00 03 00 11 00 12 00 13 01 04 ");
  EXPECT_EQ(unit.handset.Kept().Eeprom()[3], 0x84);
}

TEST(Handset, GivesEightBytesInTheLastRowAndRefusesToGoBeyond) {
  Unit unit;
  (void)unit.Say(80, "01 00 10 07");  // 1808
  EXPECT_EQ(unit.handset.Answer({83, BytesOf("03")}).size(), 2u + 2 * (2 + 1 + 8 + 1) + 1);
  EXPECT_EQ(unit.Say(83, "03"), "02 14 00 53 10 00 02 00 03 00 52 02");
  EXPECT_EQ(unit.Say(82, "03 01"), "02 14 00 52 10 00 02 00 03 00 53 02");
}

TEST(Handset, TakesTheDacOfALevelFromItsEeprom) {
  Unit unit;
  (void)unit.Say(54, "01 00 05 00");
  EXPECT_EQ(unit.Read(55, "04 00"), 600) << "GSM level 5 as it leaves the factory";
  (void)unit.Say(54, "01 00 73 00");
  EXPECT_EQ(unit.Read(55, "04 00"), 48) << "DCS level 15";
  (void)unit.Say(80, "01 00 70 00");  // 92 + 4 * 5
  (void)unit.Say(82, "03 6B 02");
  (void)unit.Say(54, "01 00 05 00");
  EXPECT_EQ(unit.Read(55, "04 00"), 619);
}

TEST(Handset, TransmitsOnlyWhileItIsToldTo) {
  Unit unit;
  EXPECT_FALSE(unit.fixture.uplink);
  (void)unit.Say(48, "02 00 3E 00");
  (void)unit.Say(54, "04 00 58 02");
  (void)unit.Say(35, "02 00");
  ASSERT_TRUE(unit.fixture.uplink);
  EXPECT_EQ(unit.fixture.uplink->arfcn, 62);
  EXPECT_NEAR(unit.fixture.uplink->powerDbm, 32, 1);
  (void)unit.Say(35, "01 00");
  EXPECT_FALSE(unit.fixture.uplink);
}

TEST(Handset, CountsTheVoltageAtItsContacts) {
  Unit unit;
  unit.fixture.Feed(true, 4.21);
  EXPECT_NEAR(unit.Read(69, "1E 00"), 625, 5);
  EXPECT_EQ(unit.Read(69, "14 00"), 4200);
  unit.fixture.Feed(true, 3.36);
  EXPECT_NEAR(unit.Read(69, "1E 00"), 496, 5);
  EXPECT_GE(unit.Read(69, "1F 00"), 256) << "the charger is connected";
  EXPECT_NEAR(unit.Read(69, "20 00"), 100, 6) << "zero calibration";
}

TEST(Handset, FallsSilentWithoutPowerAndForgetsWhatWasNotCommitted) {
  Unit unit;
  (void)unit.Say(80, "01 00 00 00");
  (void)unit.Say(82, "03 55");
  (void)unit.Say(84, "01 00");
  (void)unit.Say(82, "03 66");
  unit.fixture.Feed(true, 0);
  EXPECT_EQ(unit.Say(32, ""), "");
  unit.fixture.Feed(true, 4.2);
  EXPECT_NE(unit.Say(32, ""), "");
  EXPECT_EQ(unit.handset.Kept().Eeprom()[0], 0x55);
  EXPECT_EQ(unit.handset.Kept().Eeprom()[1], 0x00);
}

TEST(Handset, StartsAfreshAlsoAfterAShortLossOfPower) {
  Unit unit;
  (void)unit.Say(48, "02 00 3E 00");
  (void)unit.Say(35, "02 00");
  ASSERT_TRUE(unit.fixture.uplink);
  unit.fixture.Feed(true, 0);
  EXPECT_FALSE(unit.fixture.uplink) << "a dead transmitter";
  unit.fixture.Feed(true, 4.2);
  EXPECT_EQ(unit.Read(49, "02 00"), 30) << "its first channel";
  EXPECT_FALSE(unit.fixture.uplink);
}

TEST(Handset, LivesOnTheFixturesCellWhileTheSupplyIsOff) {
  Unit unit;
  unit.fixture.Feed(false, 0);
  EXPECT_NE(unit.Say(32, ""), "");
}

TEST(Handset, ReportsPowerAsLevelAndAgcAndGain) {
  Unit unit;
  unit.fixture.generator = {DownlinkMHz(40), -73.5};
  (void)unit.Say(48, "01 00 28 00");
  (void)unit.Say(52, "01 00 28 00");
  (void)unit.Say(35, "01 00");
  const auto report = [&](const char* kind) {
    const Bytes reply = Unpadded(unit.handset.Answer({36, BytesOf(kind)}));
    return reply.at(6) + 256 * reply.at(7);
  };
  const double pm = report("01 00 02 00") / 64.0;
  EXPECT_NEAR(pm, -74 + 40 + 90, 3);
  EXPECT_EQ(report("01 00 01 00"), 2 * (110 - 74)) << "Rxlevel has one fraction bit";
  (void)unit.Say(52, "01 00 1E 00");
  (void)unit.Say(35, "01 00");
  EXPECT_NEAR(report("01 00 02 00") / 64.0, pm - 10, 0.2);
}

TEST(Handset, NeverBreaksOnACommandOfAnyContent) {
  Unit unit;
  Random chance(1, 9);
  for (int i = 0; i < 20000; ++i) {
    Command command{static_cast<std::uint8_t>(chance.Uniform(0, 256)), {}};
    command.data.resize(static_cast<std::size_t>(chance.Uniform(0, 50)));
    const OperationRow* row = RowOfOperation(command.operation);
    if (row != nullptr && i % 2 == 0) {
      command.data.resize(row->most);
    }
    for (std::uint8_t& byte : command.data) {
      byte = static_cast<std::uint8_t>(chance.Uniform(0, 256));
    }
    const Bytes reply = unit.handset.Answer(command);
    EXPECT_TRUE(reply.empty() || (reply[0] == 0x02 && reply[1] == 0x14 && reply.back() == 0x02));
    EXPECT_LE(reply.size(), 200u);
  }
}

}  // namespace
}  // namespace orvane::bench::test
